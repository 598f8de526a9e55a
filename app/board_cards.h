#pragma once

#include <QString>

#include "engine/poker/cards.h"

namespace tidewell {

/// The cards of a board text, which may be unfinished; what is no card counts as none.
kestrel::CardMask boardCards(const QString& board);

}  // namespace tidewell
