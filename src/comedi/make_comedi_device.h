#pragma once

#include <memory>

#include "daq/acquisition_device.h"

namespace bellmark {

/// The boards of the comedi drivers; nullptr in a program that was built without their library.
std::unique_ptr<AcquisitionDevice> MakeComediDevice();

}  // namespace bellmark
