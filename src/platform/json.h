#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bellmark {

/// A value of a JSON document (RFC 8259), made to be written. The members of an object keep their order.
class Json {
  public:
    using Members = std::vector<std::pair<std::string, Json>>;

    Json() = default;     ///< null
    Json(double number);  ///< infinity and no number become null
    Json(int number);
    Json(long long number);
    Json(bool value);
    Json(std::string_view text);  ///< bytes that are not UTF-8 become the replacement character
    Json(const std::string& text) : Json(std::string_view(text)) {}
    Json(const char* text) : Json(std::string_view(text)) {}
    Json(const std::optional<double>& number) : Json(number ? Json(*number) : Json()) {}

    static Json Object(Members members);
    static Json Array(std::vector<Json> items);

    /// With two blanks for each level and a line break at the end.
    std::string Text() const;

  private:
    enum class Kind { Scalar, Object, Array };

    void Write(std::string& text, std::size_t level) const;

    Kind kind_ = Kind::Scalar;
    std::string scalar_ = "null";  ///< as it is written
    Members members_;              ///< an array's have no names
};

}  // namespace bellmark
