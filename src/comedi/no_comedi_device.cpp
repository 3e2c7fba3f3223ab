#include "comedi/make_comedi_device.h"

namespace bellmark {

std::unique_ptr<AcquisitionDevice> MakeComediDevice() {
    return nullptr;
}

}  // namespace bellmark
