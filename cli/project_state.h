#pragma once

#include <QVariantMap>

#include "session/config_map.h"

namespace tidewell_cli {

/// Settings for the pages of the desktop program, which hold a value for every one of theirs:
/// missing ones with their defaults, and "-" for a list of sizes that is empty. That stands for no
/// sizes as well, but a page takes a blank one for one that is yet to be filled in.
kestrel_app::ConfigMap settings_for_pages(const kestrel_app::ConfigMap& settings);

/// What the pages of the desktop program hold of complete settings. They keep iterations in 31
/// bits, and a rake cap as `page_rake_cap`.
QVariantMap page_state(const kestrel_app::ConfigMap& complete);

/// A rake cap in whole chips, at least one where there is a cap.
double page_rake_cap(double chips);

/// What a solve from these pages is made with. Missing values are left out, and so is the street,
/// which the board decides there.
kestrel_app::ConfigMap settings_of_pages(const QVariantMap& state);

}  // namespace tidewell_cli
