// GeneralTestFunction: a round trip of a client's writer and reader through a real file in the
// temporary folder, under the root element "XMLRoot", so a client can check that what it writes
// through an output channel it can read back through an input channel. Holds no state.
#pragma once

#include "TavoRoot/XMLIChannel.hpp"
#include "TavoRoot/XMLOChannel.hpp"
#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "Vesk/Location.hpp"

#include <functional>

namespace GeneralTestFunction {

// "XMLReadWriteTest.xml" in the temporary folder. The name is fixed: two runs at once share the file.
TAVOXMLUTILS_API Vesk::Location GetLocationInTemporaryFolder();

// Writes a document with the root "XMLRoot" to `location`: WriteStartDocument, `writer`, then
// WriteEndDocument, each only if everything before succeeded. The file is written when the channel is
// deleted, also after a failure. Returns the first nonzero status, or GeneralError when no channel
// could be made.
TAVOXMLUTILS_API int WriteToXMLFile(Vesk::Location const& location,
                                    std::function<int(Tavo::XMLOChannel&)> const& writer);

// Opens the file at `location` as an input channel and returns what `reader` returns. GeneralError when
// the file can't be parsed or its root element is not "XMLRoot".
TAVOXMLUTILS_API int ReadFromXMLFile(Vesk::Location const& location,
                                     std::function<int(Tavo::XMLIChannel&)> const& reader);

// Write, read back, verify (true gives 0, false GeneralError), each step only after the previous one
// succeeded; the file is deleted on every path that returns. If a callable throws, the exception goes
// to the caller and the file stays.
TAVOXMLUTILS_API int XMLReadWriteTest(std::function<int(Tavo::XMLOChannel&)> const& writer,
                                      std::function<int(Tavo::XMLIChannel&)> const& reader,
                                      std::function<bool()> const& verifier);

} // namespace GeneralTestFunction
