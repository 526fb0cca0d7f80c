#include "orvellos/base/PrettyJson.h"

#include <fmt/format.h>

#include <iterator>
#include <utility>

namespace orvellos {

namespace {

class Writer {
  public:
    std::string text;

    void write(const nlohmann::json& value, int depth) {
        if (value.is_object()) {
            writeObject(value, depth);
        } else if (value.is_array()) {
            writeArray(value, depth);
        } else if (value.is_string()) {
            writeString(value);
        } else if (value.is_number_float()) {
            writeDouble(value.get<double>());
        } else {
            text += value.dump();
        }
    }

  private:
    void startLine(int depth) {
        text += '\n';
        text.append(static_cast<std::size_t>(depth) * 2, ' ');
    }

    void writeObject(const nlohmann::json& object, int depth) {
        text += '{';
        bool first = true;
        for (const auto& [key, member] : object.items()) {
            if (!std::exchange(first, false)) text += ',';
            startLine(depth + 1);
            writeString(key);
            text += " : ";
            write(member, depth + 1);
        }
        if (!first) startLine(depth);
        text += '}';
    }

    void writeArray(const nlohmann::json& array, int depth) {
        text += '[';
        bool first = true;
        for (const auto& element : array) {
            if (!std::exchange(first, false)) text += ',';
            startLine(depth + 1);
            write(element, depth + 1);
        }
        if (!first) startLine(depth);
        text += ']';
    }

    void writeString(const nlohmann::json& string) {
        const auto quoted = string.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        for (const char c : quoted) {
            if (c == '/') text += '\\';
            text += c;
        }
    }

    void writeDouble(double number) { fmt::format_to(std::back_inserter(text), "{}", number); }
};

}  // namespace

std::string prettyJson(const nlohmann::json& value) {
    Writer writer;
    writer.write(value, 0);
    return std::move(writer.text);
}

}  // namespace orvellos
