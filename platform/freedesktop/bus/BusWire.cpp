#include "platform/freedesktop/bus/BusWire.h"

#include <algorithm>
#include <bit>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

namespace platform::freedesktop {

namespace {

constexpr char kByteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr std::uint8_t kVersion = 1;
constexpr std::uint8_t kMethodCall = 1;
constexpr std::uint8_t kMethodReturn = 2;
constexpr std::uint8_t kError = 3;
constexpr std::uint8_t kNoAutoStart = 2;  // a flag
constexpr std::size_t kFixedHeader = 16;
constexpr std::size_t kLargestMessage = 1 << 20;

enum class Field : std::uint8_t {
    Path = 1,
    Interface = 2,
    Member = 3,
    ReplySerial = 5,
    Destination = 6,
    Signature = 8
};

class WireWriter {
  public:
    std::string bytes;

    void align(std::size_t size) { bytes.resize((bytes.size() + size - 1) / size * size); }
    void byte(std::uint8_t value) { bytes += static_cast<char>(value); }
    void number(std::uint32_t value) {
        align(sizeof value);
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void text(std::string_view value) {
        number(static_cast<std::uint32_t>(value.size()));
        bytes.append(value).push_back('\0');
    }
    void signature(std::string_view value) {
        byte(static_cast<std::uint8_t>(value.size()));
        bytes.append(value).push_back('\0');
    }
    void field(Field code, std::string_view type, std::string_view value) {
        align(8);
        byte(static_cast<std::uint8_t>(code));
        signature(type);
        type == "g" ? signature(value) : text(value);
    }
};

std::string headerFields(const BusCall& call) {
    WireWriter fields;
    fields.field(Field::Path, "o", call.path);
    fields.field(Field::Interface, "s", call.interface);
    fields.field(Field::Member, "s", call.member);
    fields.field(Field::Destination, "s", call.service);
    if (!call.arguments.empty()) fields.field(Field::Signature, "g", std::string(call.arguments.size(), 's'));
    return std::move(fields.bytes);
}

// Turns bytes into values, guided by their types (D-Bus Specification, "Type System").
class Decoder {
  public:
    explicit Decoder(std::string_view bytes) : reader_(bytes) {}

    std::optional<BusArguments> values(std::string_view types) {
        auto list = nlohmann::json::array();
        while (isSound() && !types.empty()) list.push_back(value(types));
        return isSound() ? std::optional(std::move(list)) : std::nullopt;
    }

  private:
    static constexpr int kDeepest = 64;

    [[nodiscard]] bool isSound() const { return isSound_ && reader_.isWhole() && depth_ <= kDeepest; }

    // Of the first of the types, which is taken off.
    nlohmann::json value(std::string_view& types) {
        const char type = types.front();
        types.remove_prefix(1);
        switch (type) {
            case 'y':
                return reader_.byte();
            case 'b':
                return reader_.number() != 0;
            case 'n':
                return reader_.fixed<std::int16_t>();
            case 'q':
                return reader_.fixed<std::uint16_t>();
            case 'i':
                return reader_.fixed<std::int32_t>();
            case 'u':
                return reader_.number();
            case 'x':
                return reader_.fixed<std::int64_t>();
            case 't':
                return reader_.fixed<std::uint64_t>();
            case 'd':
                return reader_.fixed<double>();
            case 's':
            case 'o':
                return reader_.text();
            case 'g':
                return reader_.signature();
            default:
                return container(type, types);
        }
    }

    nlohmann::json container(char type, std::string_view& types) {
        ++depth_;
        auto inner = nlohmann::json();
        if (isSound()) inner = type == 'v' ? variant() : type == 'a' ? array(types) : structure(type, types);
        --depth_;
        return inner;
    }

    nlohmann::json variant() {
        auto type = reader_.signature();
        isSound_ = isSound_ && !type.empty();
        return isSound() ? value(type) : nlohmann::json();
    }

    nlohmann::json array(std::string_view& types) {
        auto list = nlohmann::json::array();
        const std::size_t size = reader_.number();
        const auto element = types.substr(0, lengthOfType(types));
        types.remove_prefix(element.size());
        isSound_ = isSound_ && !element.empty();
        if (isSound() && std::string_view("xtd({").find(element.front()) != std::string_view::npos)
            reader_.align(8);
        const auto end = reader_.position() + size;
        while (isSound() && reader_.position() < end) {
            auto rest = element;
            const auto before = reader_.position();
            list.push_back(value(rest));
            isSound_ = isSound_ && reader_.position() > before;  // else it would never end
        }
        return list;
    }

    // A structure, or an entry of a dictionary.
    nlohmann::json structure(char type, std::string_view& types) {
        auto list = nlohmann::json::array();
        const char closing = type == '(' ? ')' : '}';
        isSound_ = type == '(' || type == '{';
        reader_.align(8);
        while (isSound() && !types.empty() && types.front() != closing) list.push_back(value(types));
        isSound_ = isSound_ && !types.empty();
        if (isSound_) types.remove_prefix(1);
        return list;
    }

    // How many characters the first type has, its brackets and the marks of arrays included.
    static std::size_t lengthOfType(std::string_view types) {
        int open = 0;
        for (std::size_t i = 0; i < types.size(); ++i) {
            if (types[i] == '(' || types[i] == '{') ++open;
            if (types[i] == ')' || types[i] == '}') --open;
            if (open == 0 && types[i] != 'a') return i + 1;
        }
        return types.size();
    }

    WireReader reader_;
    bool isSound_ = true;
    int depth_ = 0;
};

std::size_t aligned(std::size_t size) {
    return (size + 7) / 8 * 8;
}

}  // namespace

std::string wireCall(const BusCall& call, std::uint32_t serial) {
    WireWriter body;
    for (const auto& argument : call.arguments) body.text(std::get<std::string>(argument));
    WireWriter message;
    message.byte(static_cast<std::uint8_t>(kByteOrder));
    message.byte(kMethodCall);
    message.byte(call.startsService ? 0 : kNoAutoStart);
    message.byte(kVersion);
    message.number(static_cast<std::uint32_t>(body.bytes.size()));
    message.number(serial);
    message.text(headerFields(call));
    message.bytes.pop_back();  // the list of fields has no zero after it, unlike a text
    message.align(8);
    return message.bytes + body.bytes;
}

void WireReader::align(std::size_t size) {
    static_cast<void>(take((size - at_ % size) % size));
}

std::uint8_t WireReader::byte() {
    const auto bytes = take(1);
    return bytes.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(bytes.front());
}

std::string_view WireReader::take(std::size_t size) {
    isWhole_ = isWhole_ && size <= bytes_.size() - at_;
    if (!isWhole_) return {};
    return bytes_.substr(std::exchange(at_, at_ + size), size);
}

std::string_view WireReader::counted(std::size_t size) {
    const auto bytes = take(size);
    isWhole_ = isWhole_ && byte() == 0;
    return isWhole_ ? bytes : std::string_view();
}

std::optional<BusArguments> wireArguments(const WireAnswer& answer) {
    return Decoder(answer.body).values(answer.signature);
}

std::optional<std::size_t> wireLength(std::string_view bytes) {
    if (bytes.size() < kFixedHeader) return std::nullopt;
    if (bytes.front() != kByteOrder) return 0;
    WireReader reader(bytes.substr(4));
    const std::size_t body = reader.number();
    static_cast<void>(reader.number());  // the serial
    const std::size_t fields = reader.number();
    const auto length = aligned(kFixedHeader + fields) + body;
    return length <= kLargestMessage ? length : 0;
}

std::optional<WireAnswer> wireAnswer(std::string_view message, std::uint32_t serial) {
    WireAnswer answer;
    WireReader reader(message);
    static_cast<void>(reader.byte());
    const auto type = reader.byte();
    if (type != kMethodReturn && type != kError) return std::nullopt;
    answer.isError = type == kError;
    static_cast<void>(reader.take(10));  // flags, version, the lengths and the serial are known
    const auto end = kFixedHeader + reader.number();
    bool isAnswer = false;
    while (reader.isWhole() && reader.position() < end) {
        reader.align(8);
        const auto code = static_cast<Field>(reader.byte());
        const auto kind = reader.signature();
        if (kind == "u") {
            const auto value = reader.number();
            if (code == Field::ReplySerial) isAnswer = value == serial;
        } else if (kind == "g") {
            const auto value = reader.signature();
            if (code == Field::Signature) answer.signature = value;
        } else {
            static_cast<void>(reader.text());
        }
    }
    reader.align(8);
    answer.body = message.substr(std::min(reader.position(), message.size()));
    return reader.isWhole() && isAnswer ? std::optional(answer) : std::nullopt;
}

}  // namespace platform::freedesktop
