#pragma once

namespace tidewell_platform {

/// In bytes. A log file is that long and one more message at most, and so is its predecessor.
inline constexpr long long full_log = 1 << 20;

/// Opens a log file at its end; a new one is for its owner alone. A full one is put aside first, as
/// PATH.old in place of the one before it, or is emptied where that cannot be. Since anybody can
/// put things into a temporary folder, only a regular file of this user's under one name will do:
/// no symbolic link is followed, and no pipe is waited for. Returns the descriptor, for the caller
/// to close, or -1. Takes no lock and allocates nothing: for signal handlers too.
int open_log(const char* path) noexcept;

}  // namespace tidewell_platform
