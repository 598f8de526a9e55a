#pragma once

#include <QVariantMap>

#include "session/config_map.h"

namespace tidewell {

/// A settings map of the pages in the session's terms. Numbers, texts and flags keep their kind;
/// any other value counts as the text that it converts to.
kestrel_app::ConfigMap configMapOf(const QVariantMap& map);

/// The same for the way back.
QVariantMap variantMapOf(const kestrel_app::ConfigMap& map);

}  // namespace tidewell
