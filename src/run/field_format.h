#pragma once

#include <string>

namespace bellmark {

/// Kinds of values that share a number picture.
enum class Field {
    Load = 0,
    Deflection = 1,
    Date = 2,
    Time = 3,
    TwoPlaces = 4,
    ThreePlaces = 5,
    FourPlaces = 6,
    Other = 7
};
const char* FieldFormat(Field kind, bool englishUnits);

/// "A" to "W" for 1 to 23; empty otherwise.
std::string ColumnLetter(int index);

}  // namespace bellmark
