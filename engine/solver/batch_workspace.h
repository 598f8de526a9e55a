#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "engine/game/game.h"
#include "engine/solver/aligned_buffer.h"
#include "engine/solver/lane_terminals.h"
#include "engine/solver/scratch_stack.h"
#include "engine/solver/showdown_order.h"

namespace kestrel {

/// Rows of a walk from large blocks; all given back at once.
class RowArena {
  public:
    /// Uninitialised, on a cache-line boundary; stays in place until `clear`.
    float* take(std::size_t floats) {
        constexpr std::size_t line = 16;  // floats of a cache line
        floats = (floats + line - 1) / line * line;
        used_ += floats;
        while (block_ < blocks_.size() && blocks_[block_].size - offset_ < floats) {
            ++block_;
            offset_ = 0;
        }
        if (block_ == blocks_.size()) {
            const std::size_t size = std::max(floats, smallest_block);
            blocks_.push_back({AlignedBuffer<float>(size), size});
        }
        float* const result = blocks_[block_].floats.data() + offset_;
        offset_ += floats;
        return result;
    }

    void clear() {
        block_ = 0;
        offset_ = 0;
        used_ = 0;
    }

    std::size_t used() const { return used_; }

  private:
    static constexpr std::size_t smallest_block = 65536;  // floats; some fifty rows of full ranges

    struct Block {
        AlignedBuffer<float> floats;
        std::size_t size;
    };
    std::vector<Block> blocks_;
    std::size_t block_ = 0;
    std::size_t offset_ = 0;
    std::size_t used_ = 0;
};

/// A node with the row that comes down to it and the row that goes up from it.
struct Visit {
    std::size_t node;
    const float* reach;
    float* value;
};

/// A decision on its way up: `values` holds one row for each action.
struct Decision {
    std::size_t node;
    bool own;
    const float* values;
    float* value;
};

/// The lines of one street on one board.
struct StreetWork {
    RowArena rows;
    std::vector<Decision> decisions;  // parents before children
    std::vector<LaneTerminal> folds;
    std::vector<LaneTerminal> showdowns;
    std::vector<LaneTerminal> all_ins;
    std::size_t all_in_node = 0;  // one of them
    std::vector<Visit> chances;   // `reach` scaled by the chance factor
    std::vector<Visit> dealt;     // the next street's roots behind one card
    /// Address of the first row that the last batch's way down read.
    std::uintptr_t last_way_down = 0;

    void clear() {
        rows.clear();
        decisions.clear();
        folds.clear();
        showdowns.clear();
        all_ins.clear();
        chances.clear();
    }
};

/// The buffers of one thread of a batched walk.
struct BatchWorkspace {
    BatchWorkspace(const Game& game, const ShowdownOrders& orders) : lanes(game, orders) {}

    std::array<StreetWork, 3> streets;  // by streets below the root
    LaneTerminals lanes;
    ScratchFrame frame;  // of nodes in the plain form
};

/// The workspaces of a game, as many as threads have ever walked at one time. They keep their
/// storage from walk to walk.
class WorkspacePool {
  public:
    /// Both must outlive the pool.
    WorkspacePool(const Game& game, const ShowdownOrders& orders) : game_(game), orders_(orders) {}

    /// A workspace for the time of a scope.
    class Lease {
      public:
        explicit Lease(WorkspacePool& pool) : pool_(pool), workspace_(pool.take()) {}
        ~Lease() { pool_.give_back(std::move(workspace_)); }
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;

        BatchWorkspace& operator*() const { return *workspace_; }

      private:
        WorkspacePool& pool_;
        std::unique_ptr<BatchWorkspace> workspace_;
    };

  private:
    std::unique_ptr<BatchWorkspace> take() {
        {
            const std::scoped_lock lock(mutex_);
            if (!idle_.empty()) {
                std::unique_ptr<BatchWorkspace> workspace = std::move(idle_.back());
                idle_.pop_back();
                return workspace;
            }
            // Room for all that exist, so that giving one back cannot fail.
            idle_.reserve(++count_);
        }
        return std::make_unique<BatchWorkspace>(game_, orders_);
    }

    void give_back(std::unique_ptr<BatchWorkspace> workspace) {
        const std::scoped_lock lock(mutex_);
        idle_.push_back(std::move(workspace));
    }

    const Game& game_;
    const ShowdownOrders& orders_;
    std::mutex mutex_;  // guards the two below
    std::size_t count_ = 0;
    std::vector<std::unique_ptr<BatchWorkspace>> idle_;
};

}  // namespace kestrel
