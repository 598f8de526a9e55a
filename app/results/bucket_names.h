#pragma once

#include <QString>

namespace tidewell {

/// A class of hands, such as "top pair", in the language of the user. What is none of the classes
/// stays as it is.
QString bucketDisplayName(const QString& name);

}  // namespace tidewell
