#include "app/play/play_stage.h"

#include <algorithm>
#include <iterator>

namespace tidewell {
namespace {

struct Transition {
    PlayStage from;
    PlayEvent event;
    PlayStage to;
};

using enum PlayStage;

// Every stage but NoRole can be left as well.
constexpr Transition transitions[] = {
    {NoRole, PlayEvent::Deal, Stepping},
    {Stepping, PlayEvent::Ask, Waiting},
    {Stepping, PlayEvent::End, Complete},
    {Stepping, PlayEvent::Redirect, Stepping},
    {Stepping, PlayEvent::BeginDrill, Drill},
    {Waiting, PlayEvent::Act, Judging},
    {Waiting, PlayEvent::Redirect, Stepping},
    {Waiting, PlayEvent::BeginDrill, Drill},
    {Judging, PlayEvent::Judge, Stepping},
    {Judging, PlayEvent::End, Complete},
    {Judging, PlayEvent::Redirect, Stepping},
    {Judging, PlayEvent::BeginDrill, Drill},
    {Complete, PlayEvent::Deal, Stepping},
    {Complete, PlayEvent::BeginDrill, Drill},
    {Drill, PlayEvent::Act, DrillJudging},
    {Drill, PlayEvent::EndDrill, Stepping},
    {DrillJudging, PlayEvent::Judge, DrillVerdict},
    {DrillJudging, PlayEvent::EndDrill, Stepping},
    {DrillVerdict, PlayEvent::Ask, Drill},
    {DrillVerdict, PlayEvent::EndDrill, Stepping},
};

const Transition* find(PlayStage from, PlayEvent event) {
    const auto* const found = std::ranges::find_if(transitions, [&](const Transition& transition) {
        return transition.from == from && transition.event == event;
    });
    return found == std::end(transitions) ? nullptr : found;
}

}  // namespace

bool PlayState::may(PlayEvent event) const {
    return event == PlayEvent::Leave ? started() : find(now_, event) != nullptr;
}

bool PlayState::take(PlayEvent event) {
    if (!may(event)) {
        return false;
    }
    now_ = event == PlayEvent::Leave ? NoRole : find(now_, event)->to;
    return true;
}

}  // namespace tidewell
