#include "TavoRoot/OChannel.hpp"

namespace Tavo {

OChannel::~OChannel() = default;

OBinaryChannel::~OBinaryChannel() = default;

MemoryOChannel::~MemoryOChannel() = default;

int MemoryOChannel::WriteBin(char const* bytes, unsigned int count, unsigned int* written) {
    // A null pointer is accepted only with a count of 0; anything else is refused as a whole.
    if (!bytes && count != 0) {
        if (written) {
            *written = 0;
        }
        return -1;
    }
    data.append(bytes ? bytes : "", count);
    if (written) {
        *written = count;
    }
    return 0;
}

} // namespace Tavo
