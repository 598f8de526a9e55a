#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <vector>

#include "engine/poker/cards.h"
#include "session/node_queries.h"

namespace tidewell {

/// The chance of the training table: all of it comes from one generator, so that a seed repeats a
/// session.
class Chance {
  public:
    Chance() : generator_(std::random_device()()) {}

    void seed(std::uint32_t value) { generator_.seed(value); }

    /// An entry, with a probability in proportion to its weight; entries whose weight is not finite
    /// and above 0 never come. Nothing without any that can.
    std::optional<std::size_t> pick(std::span<const double> weights);

  private:
    std::mt19937 generator_;
};

/// Two cards in the hand of a seat.
using Hole = std::array<kestrel::Card, 2>;

kestrel::CardMask maskOf(const std::optional<Hole>& hole);

/// The cards of a board text; characters that are no card do not count.
kestrel::CardMask cardsOf(const QString& board);

/// How suits are shown. A tree may keep one card for several that differ only by the names of their
/// suits; where the user has chosen another of them, suits have traded names from then on.
class ShownSuits {
  public:
    /// `images`: the suit that each of c, d, h, s is shown as. What is no exchange of suits leaves
    /// all as they are.
    explicit ShownSuits(const QString& images = QStringLiteral("cdhs"));

    kestrel::Card shown(kestrel::Card kept) const;
    kestrel::Card kept(kestrel::Card shown) const;
    Hole shown(const Hole& hole) const { return {shown(hole[0]), shown(hole[1])}; }
    Hole kept(const Hole& hole) const { return {kept(hole[0]), kept(hole[1])}; }

  private:
    std::array<int, kestrel::suit_count> image_;
    std::array<int, kestrel::suit_count> source_;
};

/// A hand of a range, as shown, with a probability in proportion to its weight, among those that
/// hold none of the cards in `used`. Nothing where none is left.
std::optional<Hole> dealHand(const std::vector<kestrel_app::SeatCombo>& range,
                             kestrel::CardMask used, const ShownSuits& suits, Chance& chance);

}  // namespace tidewell
