// The text of a double as the tree writers write it: "%.12g", an exponent of fewer than three digits
// widened by one leading zero (1e+20 becomes 1e+020), and a negative zero written as "0". The text
// of infinities and not-a-numbers is printf's own.
#pragma once

namespace TavoXML::detail {

class DoubleText {
public:
    explicit DoubleText(double value) noexcept;
    DoubleText(DoubleText const&) = delete;
    DoubleText& operator=(DoubleText const&) = delete;

    char const* Get() const noexcept { return text; }

private:
    // "-1.23456789012e-308" and a widened exponent fit several times over.
    char text[48];
};

} // namespace TavoXML::detail
