#include <algorithm>

#include "platform/text.h"
#include "tables/table.h"

namespace bellmark {

namespace {

class CsvReader {
  public:
    explicit CsvReader(std::string_view text) : text_(text) {}

    bool AtEnd() const { return at_ >= text_.size(); }

    std::vector<std::string> Record() {
        std::vector<std::string> fields{Field()};
        while (!AtEnd() && text_[at_] == ',') {
            ++at_;
            fields.push_back(Field());
        }
        SkipLineEnd();
        return fields;
    }

  private:
    std::string Field() { return !AtEnd() && text_[at_] == '"' ? QuotedField() : PlainField(); }

    std::string PlainField() {
        const std::size_t end = std::min(text_.find_first_of(",\r\n", at_), text_.size());
        const std::string_view field = Trim(text_.substr(at_, end - at_));
        at_ = end;
        return std::string(field);
    }

    std::string QuotedField() {
        std::string field;
        ++at_;
        for (;; ++at_) {
            const std::size_t quote = text_.find('"', at_);
            if (quote == std::string_view::npos) throw TableError("A quote in the table is never closed.");
            field += text_.substr(at_, quote - at_);
            at_ = quote + 1;
            if (AtEnd() || text_[at_] != '"') break;
            field += '"';
        }
        // Text between the closing quote and the next comma belongs to the field; some editors leave it there.
        return field + PlainField();
    }

    void SkipLineEnd() {
        if (!AtEnd() && text_[at_] == '\r') ++at_;
        if (!AtEnd() && text_[at_] == '\n') ++at_;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

Table ReadCsvTable(std::string_view text) {
    Table table;
    CsvReader reader(text);
    while (!reader.AtEnd()) {
        auto record = reader.Record();
        const bool isEmptyLine = record.size() == 1 && record[0].empty();
        if (isEmptyLine) continue;
        if (table.columns.empty()) {
            table.columns = std::move(record);
        } else {
            record.resize(table.columns.size());
            table.rows.push_back(std::move(record));
        }
    }
    return table;
}

}  // namespace bellmark
