// LocationInputSource: the parser's input source for a Vesk::Location. Its system id is the location's
// "file:" URL, which the parser shows in its messages and uses as base of relative references.
#pragma once

#include "TavoXMLUtils/TavoXMLUtilsExport.hpp"
#include "Vesk/Location.hpp"

#include <xercesc/sax/InputSource.hpp>

class TAVOXMLUTILS_API LocationInputSource : public xercesc::InputSource {
public:
    explicit LocationInputSource(Vesk::Location const& location);
    LocationInputSource(LocationInputSource const&) = delete;
    LocationInputSource& operator=(LocationInputSource const&) = delete;
    ~LocationInputSource() override;

    Vesk::Location const& GetLocation() const noexcept { return location; }

    // A new stream on the file that the caller owns, or null when the file can't be opened.
    xercesc::BinInputStream* makeStream() const override;

private:
    Vesk::Location location;
};
