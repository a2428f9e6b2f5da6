// The Vesk status for an error number of the operating system. Internal to Vesk.
#pragma once

#include "Vesk/VeskStatus.hpp"

#include <system_error>

namespace Vesk {

// ENOENT and ENOTDIR give StatusNotFound, EACCES, EPERM and EROFS StatusAccessDenied, EISDIR
// StatusBadLocation, anything else StatusIOError; 0 gives StatusOK.
Status StatusFromErrno(int error) noexcept;
Status StatusFromError(std::error_code const& error) noexcept;

} // namespace Vesk
