#pragma once

#include "session/config_map.h"

namespace kestrel_app {

/// The spot to start with: a flop AdJd8s, pot 18, stacks of 91 chips, 5 % rake up to 3 chips, one
/// bet and one raise size a street, 400 iterations or 0.5 % of the pot. No thread count.
ConfigMap quick_solve_preset();

}  // namespace kestrel_app
