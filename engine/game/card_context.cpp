#include "engine/game/card_context.h"

#include <mutex>
#include <unordered_map>

#include "engine/game/environment.h"

namespace kestrel {
namespace {

using Artifacts = std::shared_ptr<const CachedArtifacts>;

/// FNV-1a over the bytes of an item.
std::uint64_t hash_bytes(const void* data, std::size_t size) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const auto* byte = static_cast<const unsigned char*>(data); size > 0; ++byte, --size) {
        hash = (hash ^ *byte) * 0x100000001b3U;
    }
    return hash;
}

std::uint64_t key_of(const Board& board, const std::array<Range, 2>& weights) {
    std::uint64_t key = 0;
    const auto fold = [&key](std::uint64_t hash) {
        key ^= hash + (key << 6U) + (key >> 2U) + 0x9e3779b97f4a7c15U;
    };
    for (const Card card : board) {
        fold(hash_bytes(&card, sizeof card));
    }
    for (const Range& range : weights) {
        fold(hash_bytes(range.data(), sizeof range));
    }
    return key;
}

/// The tables of the contexts that are alive, by key. Holds no table itself.
class ArtifactCache {
  public:
    Artifacts find(std::uint64_t key, const Board& board, const std::array<Range, 2>& weights) {
        const std::scoped_lock lock(mutex_);
        const auto entry = entries_.find(key);
        if (entry == entries_.end()) {
            return nullptr;
        }
        Artifacts artifacts = entry->second.lock();
        if (artifacts == nullptr) {
            entries_.erase(entry);
            return nullptr;
        }
        return artifacts->board == board && artifacts->weights == weights ? artifacts : nullptr;
    }

    void insert(std::uint64_t key, const Artifacts& artifacts) {
        const std::scoped_lock lock(mutex_);
        std::erase_if(entries_, [](const auto& entry) { return entry.second.expired(); });
        entries_[key] = artifacts;
    }

  private:
    std::mutex mutex_;  // guards entries_; never held during a computation
    std::unordered_map<std::uint64_t, std::weak_ptr<const CachedArtifacts>> entries_;
};

ArtifactCache& artifact_cache() {
    static ArtifactCache cache;
    return cache;
}

Artifacts find_or_build(std::uint64_t key, const Board& board,
                        const std::array<Range, 2>& weights) {
    if (Artifacts found = artifact_cache().find(key, board, weights)) {
        return found;
    }
    Artifacts built = build_card_tables(board, weights, CardContext::worker_count());
    artifact_cache().insert(key, built);
    return built;
}

}  // namespace

CardContext::CardContext(const Board& board_cards, const std::array<Range, 2>& range_weights)
    : board(checked_board(board_cards)),
      weights(range_weights),
      board_mask(mask_of(board)),
      cache_key(key_of(board, weights)),
      artifacts_(find_or_build(cache_key, board, weights)),
      pockets(artifacts_->pockets),
      pocket_weights(artifacts_->pocket_weights),
      removal_weights(artifacts_->removal_weights),
      isomorphism(artifacts_->isomorphism),
      showdown(artifacts_->showdown),
      same_pocket(artifacts_->same_pocket),
      all_positions(artifacts_->all_positions),
      valid_by_card(artifacts_->valid_by_card),
      valid_by_pair(artifacts_->valid_by_pair),
      blocked_by_card(artifacts_->blocked_by_card),
      blocked_by_pair(artifacts_->blocked_by_pair),
      combination_mass(artifacts_->combination_mass) {}

const ShowdownTable& CardContext::showdown_table(Card card_a, Card card_b) const {
    static const ShowdownTable empty;
    if (card_a >= card_count || card_b >= card_count || card_a == card_b) {
        return empty;
    }
    return showdown[pocket_index(card_a, card_b)];
}

std::size_t CardContext::memory_bytes() const {
    return tables_bytes(*artifacts_);
}

std::size_t CardContext::worker_count() {
    return number_from_environment("KESTREL_CARDCTX_MAX_WORKERS", 1, hardware_threads());
}

}  // namespace kestrel
