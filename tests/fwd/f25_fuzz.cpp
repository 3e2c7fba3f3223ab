// Whatever bytes an F25 file holds: it is refused with a reason, or its document has the drops of the file.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fwd/f25_file.h"
#include "fwd/fwd_document.h"
#include "pddx/pddx_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bellmark;
    try {
        const F25Survey survey = ReadF25({reinterpret_cast<const char*>(data), size});
        PDDXFile document;
        FillDocument(survey, true, document);
        const FWDDocument read(document);
        const auto& drops = survey.locations.front().drops;
        const bool isWhole = read.Locations() == static_cast<int>(survey.locations.size()) &&
                             read.Drops() == static_cast<int>(drops.size()) &&
                             read.DropFields(1, 1).size() == drops.front().deflections.size() + 1;
        if (!isWhole) std::abort();
    } catch (const F25Error&) {
    }
    return 0;
}
