#include "run/field_format.h"

#include <gtest/gtest.h>

#include "platform/format.h"

namespace bellmark {
namespace {

TEST(FieldFormat, ValuesHaveOnePictureByKind) {
    const struct {
        Field kind;
        const char* english;
        const char* metric;
    } cases[] = {
        {Field::Load, "1,234.6", "1234.568"},          {Field::Deflection, "1234.57", "1,235"},
        {Field::TwoPlaces, "1234.57", "1234.57"},      {Field::ThreePlaces, "1234.568", "1234.568"},
        {Field::FourPlaces, "1234.5678", "1234.5678"}, {Field::Other, "1,234.568", "1234.5678"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(Format(1234.5678, FieldFormat(test.kind, true)), test.english);
        EXPECT_EQ(Format(1234.5678, FieldFormat(test.kind, false)), test.metric);
    }
    const DateTime moment = MakeDateTime(2012, 3, 9, 14, 5, 9);
    EXPECT_EQ(Format(moment, FieldFormat(Field::Date, true)), "09-Mar-2012");
    EXPECT_EQ(Format(moment, FieldFormat(Field::Time, false)), "14:05:09");
}

TEST(FieldFormat, ColumnsHaveLettersFromAToW) {
    EXPECT_EQ(ColumnLetter(1) + ColumnLetter(23) + ColumnLetter(0) + ColumnLetter(24), "AW");
}

}  // namespace
}  // namespace bellmark
