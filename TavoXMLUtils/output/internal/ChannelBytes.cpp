#include "TavoXMLUtils/output/internal/ChannelBytes.hpp"

#include "TavoXMLUtils/support/internal/Failures.hpp"
#include "TavoXMLUtils/support/internal/Throw.hpp"

#include "TavoRoot/OChannel.hpp"
#include "TavoRoot/TavoException.hpp"

#include <algorithm>
#include <limits>

namespace TavoXML::detail {

void WriteFormattedBytes(Tavo::OChannel& channel, XMLByte const* bytes, XMLSize_t count) {
    // WriteBin counts in 32 bits; a larger block goes in pieces, still in order.
    constexpr XMLSize_t gLargestPiece = std::numeric_limits<unsigned int>::max();
    while (count > 0) {
        unsigned int const piece = static_cast<unsigned int>(std::min(count, gLargestPiece));
        int const status = channel.WriteBin(reinterpret_cast<char const*>(bytes), piece, nullptr);
        if (status != NoError) {
            Throw<Tavo::RunTimeErrorException>("The output channel refused the formatted bytes", status);
        }
        bytes += piece;
        count -= piece;
    }
}

} // namespace TavoXML::detail
