// A plain byte sink (not a binary stream unless Base says so) that keeps every WriteBin call apart; from
// call number `refuseAt` on (counting from 1) it refuses with status 5 and keeps nothing.
#pragma once

#include "TavoRoot/OChannel.hpp"

#include <string>
#include <vector>

template <class Base>
class RecordingChannel : public Base {
public:
    std::vector<std::string> calls;
    std::string bytes; // all calls together
    int refuseAt = 0;
    int attempts = 0;

    int WriteBin(char const* data, unsigned int count, unsigned int* written) override {
        if (++attempts >= refuseAt && refuseAt != 0) {
            return 5;
        }
        calls.emplace_back(data, count);
        bytes += calls.back();
        if (written != nullptr) {
            *written = count;
        }
        return 0;
    }
};
using PlainChannel = RecordingChannel<Tavo::OChannel>;
using BinaryChannel = RecordingChannel<Tavo::OBinaryChannel>;
