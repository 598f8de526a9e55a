#include "app/board_cards.h"

#include <string>

#include "session/config_map.h"

namespace tidewell {

kestrel::CardMask boardCards(const QString& board) {
    const std::string cards = kestrel_app::normalize_board_text(board.toStdString());
    kestrel::CardMask mask = 0;
    for (std::size_t place = 0; place < cards.size(); place += 2) {
        mask |= kestrel::card_bit(kestrel::parse_card(cards.substr(place, 2)));
    }
    return mask;
}

}  // namespace tidewell
