#include "platform/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace bellmark {
namespace {

TEST(Json, IsWrittenInTheOrderOfItsMembers) {
    const Json value = Json::Object({{"z", 1.25},
                                     {"whole", 3},
                                     {"large", 1e15},
                                     {"unknown", std::optional<double>()},
                                     {"infinite", std::numeric_limits<double>::infinity()},
                                     {"yes", true},
                                     {"none", Json::Array({})},
                                     {"list", Json::Array({"a", Json(), Json::Object({{"b", -1}})})}});
    EXPECT_EQ(value.Text(),
              "{\n  \"z\": 1.25,\n  \"whole\": 3,\n  \"large\": 1E+15,\n  \"unknown\": null,\n  \"infinite\": null,\n"
              "  \"yes\": true,\n  \"none\": [],\n  \"list\": [\n    \"a\",\n    null,\n    {\n      \"b\": -1\n    }\n"
              "  ]\n}\n");
}

/// The ends of the ranges of RFC 3629, and what lies just beyond them.
TEST(Json, TextsAreEscapedAndAlwaysUtf8) {
    const std::string lost = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"a\"b\\c/d", "a\\\"b\\\\c/d"},
        {"tab\tline\nend\r\x1F\x7F", "tab\\u0009line\\nend\\u000d\\u001f\x7F"},
        {"\xC2\x80\xDF\xBF", "\xC2\x80\xDF\xBF"},
        {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {"caf\xE9", "caf" + lost},
        {"\xC1\xBF", lost + lost},
        {"\xE0\x9F\xBF", lost + lost + lost},
        {"\xED\xA0\x80", lost + lost + lost},
        {"\xF0\x8F\xBF\xBF", lost + lost + lost + lost},
        {"\xF4\x90\x80\x80", lost + lost + lost + lost},
        {"\xF5\x80\x80\x80", lost + lost + lost + lost},
        {"cut \xE2\x82", "cut " + lost + lost},
    };
    for (const auto& [text, written] : cases) EXPECT_EQ(Json(text).Text(), '"' + written + "\"\n");
}

}  // namespace
}  // namespace bellmark
