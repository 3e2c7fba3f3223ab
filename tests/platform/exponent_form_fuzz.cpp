#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/format.h"
#include "platform/numbers.h"

// Any bytes are taken as numbers. The quick way of drop files writes them as the general one does; a blank in the
// picture avoids the quick way.

namespace {

using namespace bellmark;

void CheckNumber(double value, int decimals, const char* picture) {
    std::array<char, exponentFormRoom> text;
    const char* const end = WriteExponentForm(text.data(), value, decimals);
    const std::string quick(static_cast<const char*>(text.data()), end);
    const std::string general = std::isfinite(value) ? Format(value, picture) : NumberText(value) + ' ';
    if (quick + ' ' != general) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (; size >= sizeof(double); data += sizeof(double), size -= sizeof(double)) {
        double value = 0;
        std::memcpy(&value, data, sizeof(value));
        CheckNumber(value, 4, "0.0000E+00 ");
        CheckNumber(value, 7, "0.0000000E+00 ");
    }
    return 0;
}
