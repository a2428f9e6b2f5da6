// Vesk::Folder: a folder at a location.
#pragma once

#include "Vesk/Location.hpp"
#include "Vesk/Name.hpp"
#include "Vesk/VeskExport.hpp"
#include "Vesk/VeskStatus.hpp"

namespace Vesk {

class VESK_API Folder {
public:
    // `flags` is reserved; pass FolderAccessDefault.
    Folder(Location const& location, int flags);

    Location const& GetLocation() const noexcept { return location; }
    bool Exists() const;
    // Fills `name` with prefix + a generated part + suffix that names nothing in the folder at the time
    // of the call (a folder that does not exist holds no names). The generated part is 12 random
    // lower-case letters and digits. Null prefix or suffix count as empty. Returns 0, or a nonzero status
    // for an empty location, a null `name`, or when no free name was found.
    unsigned int GenerateUnusedName(Name* name, char const* prefix, char const* suffix) const;

private:
    Location location;
};

} // namespace Vesk
