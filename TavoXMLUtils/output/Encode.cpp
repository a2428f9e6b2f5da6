// TavoXML::Encode: the five XML characters of a text as entity references.
#include "TavoXMLUtils/output/FormatXMLDoc.hpp"

namespace TavoXML {

Tavo::UniString Encode(Tavo::UniString const& text) {
    Tavo::UniString encoded(text);
    // The ampersand comes third on purpose: it also rewrites the two references made before it.
    encoded.ReplaceAll(Tavo::UniString("'"), Tavo::UniString("&apos;"));
    encoded.ReplaceAll(Tavo::UniString("\""), Tavo::UniString("&quot;"));
    encoded.ReplaceAll(Tavo::UniString("&"), Tavo::UniString("&amp;"));
    encoded.ReplaceAll(Tavo::UniString("<"), Tavo::UniString("&lt;"));
    encoded.ReplaceAll(Tavo::UniString(">"), Tavo::UniString("&gt;"));
    return encoded;
}

} // namespace TavoXML
