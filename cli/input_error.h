#pragma once

#include <stdexcept>

namespace tidewell_cli {

/// Something on the command line or in the spot that cannot be used. The text is one line for the
/// user, without a full stop.
class InputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace tidewell_cli
