#include "TavoXMLUtils/builder/internal/FileReplacement.hpp"

#include "Vesk/FileSystem.hpp"
#include "Vesk/Folder.hpp"
#include "Vesk/Name.hpp"
#include "Vesk/VeskStatus.hpp"

namespace TavoXML::detail {

namespace {

// A leading dot keeps the temporary file out of ordinary folder listings.
constexpr char gTemporaryPrefix[] = ".TavoXML_";
constexpr char gTemporarySuffix[] = ".tmp";

} // namespace

FileReplacement::FileReplacement(Vesk::Location const& target) : target(target) {}

FileReplacement::~FileReplacement() {
    if (!committed) {
        Discard();
    }
}

int FileReplacement::WriteBin(char const* data, unsigned int count, unsigned int* written) {
    if (written != nullptr) {
        *written = 0;
    }
    if (status == Vesk::StatusOK && file == nullptr) {
        status = Begin();
    }
    if (status == Vesk::StatusOK) {
        status = static_cast<unsigned int>(file->WriteBin(data, count, written));
    }
    return static_cast<int>(status);
}

unsigned int FileReplacement::Begin() {
    Vesk::Location const folder = target.GetParent();
    Vesk::Name name;
    if (unsigned int const generated = Vesk::Folder(folder, Vesk::FolderAccessDefault)
                                           .GenerateUnusedName(&name, gTemporaryPrefix, gTemporarySuffix)) {
        return generated;
    }
    Vesk::Location candidate = folder;
    if (candidate.AppendToLocal(name) != 0) {
        return Vesk::StatusBadLocation;
    }
    auto opened = std::make_unique<Vesk::File>(candidate, Vesk::File::OnNotFoundCreate);
    unsigned int const result = opened->Open(Vesk::File::OpenWrite, Vesk::AccessDeniedReport);
    if (result == Vesk::StatusOK) {
        temporary = candidate;
        file = std::move(opened);
    }
    return result;
}

// Flushed to storage before the rename, so that the target never names a file whose bytes are not
// there yet.
bool FileReplacement::Commit() {
    if (status == Vesk::StatusOK && file == nullptr) {
        status = Begin();
    }
    if (status == Vesk::StatusOK) {
        status = file->Flush();
    }
    if (status == Vesk::StatusOK) {
        status = file->Close();
    }
    if (status == Vesk::StatusOK) {
        status = Vesk::fileSystem.Rename(temporary, target);
    }
    if (status != Vesk::StatusOK) {
        Discard();
        return false;
    }
    committed = true;
    return true;
}

// Runs from the destructor: whatever fails here is dropped, and the temporary file may then remain.
void FileReplacement::Discard() noexcept {
    try {
        if (file != nullptr) {
            file->Close();
        }
        if (!temporary.IsEmpty()) {
            Vesk::fileSystem.Delete(temporary, Vesk::DeleteFileOrEmptyFolder, Vesk::DeleteForce);
            temporary.Clear();
        }
    } catch (...) {
    }
}

} // namespace TavoXML::detail
