#pragma once

#include <string>
#include <string_view>

namespace bellmark {

/// The SHA-256 digest of the bytes as 64 lower-case hexadecimal digits (FIPS 180-4).
std::string Sha256(std::string_view bytes);

/// The same without the instructions that some processors have for it.
std::string Sha256InPortableCode(std::string_view bytes);

}  // namespace bellmark
