#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "session/finished_solve.h"
#include "tests/engine/support.h"

namespace kestrel_app {

/// A solved spot with the view that questions are asked of.
struct Answered {
    std::shared_ptr<const kestrel::Solved> solved;
    FinishedSolve finish;

    explicit Answered(const kestrel::Spot& spot, std::uint32_t iterations = 20,
                      std::size_t threads = 1)
        : Answered(std::make_shared<const kestrel::Solved>(spot, options(iterations, threads))) {}

    const kestrel::Game& game() const { return solved->game; }
    const kestrel::DiscountedCfr& cfr() const { return solved->cfr; }

  private:
    explicit Answered(std::shared_ptr<const kestrel::Solved> solve)
        : solved(std::move(solve)),
          finish(std::shared_ptr<const kestrel::Game>(solved, &solved->game),
                 std::shared_ptr<const kestrel::DiscountedCfr>(solved, &solved->cfr)) {}

    static kestrel::CfrOptions options(std::uint32_t iterations, std::size_t threads) {
        kestrel::CfrOptions result = kestrel::iterations(iterations);
        result.threads = threads;
        return result;
    }
};

}  // namespace kestrel_app
