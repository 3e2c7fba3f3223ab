#pragma once

#include <string>
#include <vector>

#include "results/rich_text.h"
#include "run/calibration_run.h"
#include "run/center_config.h"

/// The certificate of a calibration: the center's template with the run's numbers in place of its keywords.
namespace bellmark {

inline constexpr const char* certificateTemplateName = "CertificateTemplate.rtf";

/// The make as certificates spell it: "Carlbro" is one word.
const char* MakerName(Make make);

/// "CalibrationCertificate09-Mar-2012.rtf", without a blank before the date. ending: ".rtf" and the like.
std::string CertificateName(DateTime today, const char* ending);

/// The blocks of the certificate. It leaves out what was not calibrated.
struct CertificateBlocks {
    bool loadCell = false;
    bool sensors = false;
};

/// Fills in the template. Returns the keywords that the template lacks: their values are missing in the certificate.
std::vector<std::string> FillCertificate(RichText& text, const CalibrationRun& run, const CenterConfig& center,
                                         const CertificateBlocks& blocks, DateTime today);

/// The filled template with margins of one inch, ready to be written.
std::string CertificateRtf(const RichText& text);

}  // namespace bellmark
