// Status codes and enum values of the file library, all in one place.
#pragma once

namespace Vesk {

// Status codes returned by Vesk operations (0 is success).
enum Status : unsigned int {
    StatusOK = 0,
    StatusEndOfFile = 0x81000100u,    // a read reached the end of the file
    StatusNotFound = 0x81010303u,     // nothing there (Delete of a missing target, Open of a missing file)
    StatusAccessDenied = 0x81010304u, // the system refused access
    StatusNotOpen = 0x81010305u,      // read or write on a file that is not open
    StatusIOError = 0x81010306u,      // the system reported a read or write failure
    StatusBadLocation = 0x81010307u,  // empty or unusable location
    StatusAlreadyOpen = 0x81010308u,  // Open on an open file
    StatusWrongMode = 0x81010309u,    // read on a file opened for writing or the other way round
    StatusExists = 0x8101030Au,       // an entry is in the way (folder not empty, no free name)
    StatusBadArgument = 0x8101030Bu,  // an argument out of its range
};

// Identifiers of special locations for fileSystem.GetSpecialLocation.
enum SpecialLocation : int {
    SpecialLocationTemporary = 12,
};

// Flags of a Folder; none are defined, so every Folder is made with FolderAccessDefault.
enum FolderFlags : int {
    FolderAccessDefault = 0,
};

// What Delete does with folders (the second argument of fileSystem.Delete).
enum DeleteMode : int {
    DeleteFileOrEmptyFolder = 0,
    DeleteRecursively = 1,
};

// How Delete treats a read-only target (the third argument of fileSystem.Delete).
enum DeleteAccess : int {
    DeleteKeepReadOnly = 0,
    DeleteAskForReadOnly = 1,
    DeleteForce = 2,
};

// How Open treats a file that the system refuses.
enum AccessDeniedTreatment : int {
    AccessDeniedFail = 0,
    AccessDeniedRetryOnce = 1,
    AccessDeniedReport = 2, // report the refusal as a status; the usual choice
};

} // namespace Vesk
