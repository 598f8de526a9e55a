#pragma once

#include "session/config_map.h"

namespace kestrel_app {

// Spots to start with, both flops with one bet and one raise size a street, 5 % rake, 400
// iterations or a target of 0.5 % of the pot. No thread count.

/// A long solve for development: QsJh2h, pot 180, stacks of 910 chips, rake up to 30 chips.
ConfigMap default_preset();

/// AdJd8s, pot 18, stacks of 91 chips, rake up to 3 chips.
ConfigMap quick_solve_preset();

}  // namespace kestrel_app
