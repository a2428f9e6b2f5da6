// TavoXML::detail::FileReplacement: replaces the file at a location so that a failure loses nothing. The
// bytes go to a temporary file beside the target (".TavoXML_" + 12 letters and digits + ".tmp"), which
// Commit flushes to storage and renames over the target. Until then the target stays as it was.
//
// State model: idle (nothing created) -> writing (the first WriteBin created the temporary file) ->
// committed, or failed. A replacement that ends uncommitted removes its temporary file.
//
// Failures: WriteBin returns the file library's status of the failed creation or write, and every later
// WriteBin fails with the same status. Commit returns false after any failure so far, and on a failed
// flush, close or rename; the temporary file is then removed and the target untouched. Nothing throws
// except std::bad_alloc.
#pragma once

#include "TavoRoot/OChannel.hpp"
#include "Vesk/File.hpp"
#include "Vesk/Location.hpp"

#include <memory>

namespace TavoXML::detail {

class FileReplacement final : public Tavo::OChannel {
public:
    explicit FileReplacement(Vesk::Location const& target);
    FileReplacement(FileReplacement const&) = delete;
    FileReplacement& operator=(FileReplacement const&) = delete;
    ~FileReplacement() override;

    int WriteBin(char const* data, unsigned int count, unsigned int* written) override;
    // Puts the bytes written so far in place of the target; with no byte written, an empty file.
    bool Commit();

private:
    // Creates and opens the temporary file; the status of the file library.
    unsigned int Begin();
    void Discard() noexcept;

    Vesk::Location target;
    Vesk::Location temporary;
    std::unique_ptr<Vesk::File> file;
    unsigned int status = 0;
    bool committed = false;
};

} // namespace TavoXML::detail
