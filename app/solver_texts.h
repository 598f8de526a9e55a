#pragma once

#include <QString>

namespace tidewell {

/// What the solver says is wrong with a spot, in words for a person and in their language: the
/// engine and the session speak English and of their grammars. What is not known here comes back
/// as it is.
QString reasonInWords(const QString& message);

/// The same of a piece of typed text: "“KK:1.5”: a weight lies between 0 and 1". A long piece is
/// cut.
QString reasonInWords(const QString& piece, const QString& message);

}  // namespace tidewell
