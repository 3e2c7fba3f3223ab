#include "run/field_format.h"

namespace bellmark {

const char* FieldFormat(Field kind, bool englishUnits) {
    switch (kind) {
        case Field::Load:
            return englishUnits ? "#,##0.0" : "#0.000";
        case Field::Deflection:
            return englishUnits ? "#0.00" : "#,##0";
        case Field::Date:
            return "dd-mmm-yyyy";
        case Field::Time:
            return "hh:nn:ss";
        case Field::TwoPlaces:
            return "#0.00";
        case Field::ThreePlaces:
            return "#0.000";
        case Field::FourPlaces:
            return "#0.0000";
        case Field::Other:
            break;
    }
    return englishUnits ? "#,##0.00#" : "#0.000#";
}

std::string ColumnLetter(int index) {
    return index >= 1 && index <= 23 ? std::string(1, static_cast<char>('A' + index - 1)) : std::string();
}

}  // namespace bellmark
