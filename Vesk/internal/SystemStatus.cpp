#include "Vesk/internal/SystemStatus.hpp"

#include <cerrno>

namespace Vesk {

Status StatusFromErrno(int error) noexcept {
    switch (error) {
        case 0:
            return StatusOK;
        case ENOENT:
        case ENOTDIR:
            return StatusNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
            return StatusAccessDenied;
        case EISDIR:
            return StatusBadLocation;
        default:
            return StatusIOError;
    }
}

Status StatusFromError(std::error_code const& error) noexcept {
    if (!error) {
        return StatusOK;
    }
    return error.category() == std::system_category() || error.category() == std::generic_category()
               ? StatusFromErrno(error.value())
               : StatusIOError;
}

} // namespace Vesk
