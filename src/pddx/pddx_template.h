#pragma once

#include <span>
#include <string_view>

#include "pddx/pddx_file.h"

namespace bellmark {

/// A key as a new section holds it.
struct PDDXTemplateKey {
    std::string_view handle;
    PDDXDataType dataType;
    std::string_view value = {};
};

struct PDDXTemplateSection {
    std::string_view handle;
    std::string_view description;  ///< of each of its elements
    std::span<const PDDXTemplateKey> keys;
};

/// What a new document holds, in the order in which it is written. The reader reads only these keys.
std::span<const PDDXTemplateSection> PDDXTemplate();

/// The sections that repeat.
std::span<const PDDXTemplateKey> TestLocationKeys();
std::span<const PDDXTemplateKey> BellmarkHistoryKeys();

}  // namespace bellmark
