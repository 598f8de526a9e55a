#pragma once

#include <QString>
#include <QVariantMap>

namespace tidewell {

/// Compares two hands on a full board. Cards as "AhKd", white space anywhere; characters beyond
/// five cards of the board and two of a hand are ignored. The answer has "winner" ("OOP", "IP",
/// "TIE") and "oopStrength" and "ipStrength" (unsigned 32-bit, the higher one wins); for a text
/// that is too short or holds no cards the winner is "UNKNOWN" and both strengths are 0. Cards must
/// be different; that is not checked.
QVariantMap showdownWinner(const QString& boardText, const QString& oopText, const QString& ipText);

}  // namespace tidewell
