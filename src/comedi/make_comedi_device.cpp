#include "comedi/make_comedi_device.h"

#include <unistd.h>

#include "comedi/comedi_device.h"

namespace bellmark {

std::unique_ptr<AcquisitionDevice> MakeComediDevice() {
    return std::make_unique<ComediDevice>(
        [](int file, void* bytes, std::size_t most) { return static_cast<long>(::read(file, bytes, most)); });
}

}  // namespace bellmark
