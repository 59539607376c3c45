#include "workbench/cli/TableOutput.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "platform/base/Text.h"

namespace kvx::cli {
namespace {

using Json = nlohmann::ordered_json;

std::size_t Characters(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

Json ToJson(const Members& members);

struct ValueToJson {
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(const Members& members) const { return ToJson(members); }
    Json operator()(const std::vector<Members>& list) const {
        Json array = Json::array();
        for (const Members& each : list) array.push_back(ToJson(each));
        return array;
    }
    template <class Plain>
    Json operator()(const Plain& value) const {
        return value;
    }
};

Json ToJson(const Members& members) {
    Json object = Json::object();
    for (const auto& [key, value] : members) object[key] = std::visit(ValueToJson{}, value.data);
    return object;
}

// One line; blanks fill each text up to its column.
class LineWriter {
  public:
    LineWriter(std::ostream& out, const AnalysisForm& form, const std::vector<std::size_t>& widths)
        : out_(out), form_(form), widths_(widths) {}

    template <class TextOf>
    void Write(TextOf textOf) {
        std::string line;
        for (std::size_t c = 0; c < widths_.size(); ++c) {
            const std::string text = textOf(c);
            const std::string blanks(widths_[c] - Characters(text), ' ');
            const bool right = form_.columns[c].kind != ValueKind::Text;
            line.append(c ? "  " : "");
            line.append(right ? blanks : "").append(text).append(right ? "" : blanks);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out_ << line << '\n';
    }

  private:
    std::ostream& out_;
    const AnalysisForm& form_;
    const std::vector<std::size_t>& widths_;
};

}  // namespace

TableOutput::TableOutput(const Analysis& analysis) : analysis_(analysis) {
    order_.Begin(static_cast<std::uint32_t>(analysis_.RowCount()));
}

bool TableOutput::Sort(std::string_view column, bool descending) {
    const auto columns = analysis_.Form().columns;
    const auto at = std::find_if(columns.begin(), columns.end(), [column](const auto& each) {
        return each.kind != ValueKind::Bar && each.key == column;
    });
    if (at == columns.end()) return false;
    order_.SortBy(static_cast<int>(at - columns.begin()), !descending);
    return order_.Continue(analysis_, RowOrder::Clock::time_point::max());
}

int TableOutput::Row(int k) const {
    const auto& order = order_.Order();
    return order.empty() ? k : static_cast<int>(order[static_cast<std::size_t>(k)]);
}

std::string TableOutput::Text(int k, std::size_t column) const {
    return std::string(TrimLeft(analysis_.Cell(Row(k), static_cast<int>(column))));
}

void TableOutput::WriteText(std::ostream& out) const {
    const AnalysisForm& form = analysis_.Form();
    const int rows = analysis_.RowCount();
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < form.columns.size(); ++c) {
        if (form.columns[c].kind == ValueKind::Bar) break;  // behind all texts
        std::size_t widest = std::string_view(form.columns[c].title).size();
        for (int k = 0; k < rows; ++k) widest = std::max(widest, Characters(Text(k, c)));
        widths.push_back(widest);
    }
    LineWriter line(out, form, widths);
    out << '\n' << form.title << '\n';
    line.Write([&](std::size_t c) { return form.columns[c].title; });
    for (int k = 0; k < rows; ++k) line.Write([&](std::size_t c) { return Text(k, c); });
}

void TableOutput::WriteJson(std::ostream& out, const std::string& indent) const {
    out << "[";
    const int rows = analysis_.RowCount();
    for (int k = 0; k < rows; ++k) {
        const Json row = ToJson(analysis_.Values(Row(k)));
        out << (k ? ",\n" : "\n") << indent << "  "
            << row.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    if (rows) out << "\n" << indent;
    out << "]";
}

namespace {

std::string Field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

}  // namespace

void TableOutput::WriteCsv(std::ostream& out) const {
    WriteTableCsv(out, analysis_, analysis_.RowCount(), [this](int k) { return Row(k); });
}

void WriteTableCsv(std::ostream& out, const Analysis& analysis, int rows,
                   const std::function<int(int k)>& rowAt) {
    const auto columns = analysis.Form().columns;
    for (std::size_t c = 0; c < columns.size(); ++c) out << (c ? "," : "") << Field(columns[c].key);
    out << "\r\n";
    for (int k = 0; k < rows; ++k) {
        const int row = rowAt(k);
        for (std::size_t c = 0; c < columns.size(); ++c) {
            const auto column = static_cast<int>(c);
            const std::string text(TrimLeft(analysis.Cell(row, column)));
            const bool time = columns[c].kind == ValueKind::Time;
            const auto number = time ? analysis.SortNumber(row, column) : 0;
            const bool counts = time && number != kNoSortNumber && !text.empty();
            out << (c ? "," : "") << (counts ? std::to_string(number) : Field(text));
        }
        out << "\r\n";
    }
}

std::string TableOutput::ColumnKeys() const {
    std::string keys;
    for (const AnalysisColumn& column : analysis_.Form().columns)
        if (column.kind != ValueKind::Bar) keys.append(keys.empty() ? "" : " ") += column.key;
    return keys;
}

std::string JsonMember(const Member& member) {
    const Json object = ToJson({member});
    const auto text = object.dump(-1, ' ', false, Json::error_handler_t::replace);
    return text.substr(1, text.size() - 2);
}

std::string JsonTexts(const std::vector<std::string>& texts) {
    return Json(texts).dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kvx::cli
