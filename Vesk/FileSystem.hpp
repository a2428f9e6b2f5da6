// Vesk::fileSystem: the operations on the file system as a whole.
#pragma once

#include "Vesk/Location.hpp"
#include "Vesk/VeskExport.hpp"
#include "Vesk/VeskStatus.hpp"

namespace Vesk {

class VESK_API FileSystem {
public:
    // SpecialLocationTemporary (12): the temporary folder, from TMPDIR or else /tmp. Returns 0, or a
    // nonzero status for an unknown identifier.
    unsigned int GetSpecialLocation(int identifier, Location* location) const;
    // Deletes a file (or an empty folder; a whole tree with DeleteRecursively). Returns 0 when deleted,
    // StatusNotFound when there was nothing to delete, another status on failure.
    unsigned int Delete(Location const& location, int mode, int access) const;
    bool Exists(Location const& location) const;
    // Renames `from` to `to` in one step, replacing a file at `to` (rename(2)): whoever looks at `to`
    // sees the old file or the new one, never neither. Both must lie on one file system. Returns 0, or
    // the failure status (StatusBadLocation for an empty location or a folder in the way).
    unsigned int Rename(Location const& from, Location const& to) const;
};

VESK_API extern FileSystem const fileSystem;

} // namespace Vesk
