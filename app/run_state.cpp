#include "app/run_state.h"

#include <algorithm>
#include <iterator>

namespace tidewell {
namespace {

struct Transition {
    Activity from;
    RunEvent event;
    Activity to;
};

// A check does nothing that could not be left at once; a solve has to tell its last first.
constexpr Transition transitions[] = {
    {Activity::Idle, RunEvent::Start, Activity::Checking},
    {Activity::Checking, RunEvent::Fits, Activity::Solving},
    {Activity::Checking, RunEvent::Cancel, Activity::Idle},
    {Activity::Checking, RunEvent::Discard, Activity::Idle},
    {Activity::Checking, RunEvent::End, Activity::Idle},
    {Activity::Solving, RunEvent::Cancel, Activity::Cancelling},
    {Activity::Solving, RunEvent::Discard, Activity::Discarding},
    {Activity::Solving, RunEvent::End, Activity::Idle},
    {Activity::Cancelling, RunEvent::Discard, Activity::Discarding},
    {Activity::Cancelling, RunEvent::End, Activity::Idle},
    {Activity::Discarding, RunEvent::End, Activity::Idle},
    {Activity::Idle, RunEvent::BeginFile, Activity::File},
    {Activity::File, RunEvent::EndFile, Activity::Idle},
};

}  // namespace

bool RunState::take(RunEvent event) {
    const auto* const found = std::ranges::find_if(transitions, [&](const Transition& transition) {
        return transition.from == now_ && transition.event == event;
    });
    if (found == std::end(transitions)) {
        return false;
    }
    now_ = found->to;
    return true;
}

}  // namespace tidewell
