#include "platform/freedesktop/files/JsonDefaultsStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/JsonText.h"
#include "platform/System.h"
#include "platform/Text.h"

namespace platform::freedesktop {

namespace {

using nlohmann::json;

constexpr std::size_t kLargestFile = 4 << 20;

// What each kind of value is written as.
struct Encoder {
    json operator()(bool value) const { return value; }
    json operator()(std::int64_t value) const { return value; }
    json operator()(double value) const { return value; }
    json operator()(const std::string& value) const { return value; }
    json operator()(const DefaultsDictionary& value) const { return value; }
    json operator()(const DefaultsData& value) const {
        if (isUtf8(value.bytes)) return {{"data", value.bytes}};
        auto bytes = json::array();
        for (const char byte : value.bytes) bytes.push_back(static_cast<unsigned char>(byte));
        return {{"bytes", std::move(bytes)}};
    }
};

bool isByte(const json& element) {
    return element.is_number_unsigned() && element.get<std::uint64_t>() <= 255;
}

std::optional<DefaultsData> decodeData(const json& object) {
    if (object.size() != 1) return std::nullopt;
    const auto& content = object.front();
    if (object.contains("data") && content.is_string()) return DefaultsData{content};
    if (!object.contains("bytes") || !content.is_array() ||
        !std::all_of(content.begin(), content.end(), isByte))
        return std::nullopt;
    DefaultsData data;
    for (const auto& byte : content) data.bytes += static_cast<char>(byte.get<unsigned char>());
    return data;
}

DefaultsDictionary decodeDictionary(const json& object) {
    DefaultsDictionary dictionary;
    for (const auto& [key, member] : object.items())
        if (member.is_number()) dictionary.emplace(key, member);
    return dictionary;
}

std::optional<DefaultsValue> decodeNumber(const json& number) {
    if (number.is_number_float()) return number.get<double>();
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    if (number.is_number_unsigned() && number.get<std::uint64_t>() > kLargest) return std::nullopt;
    return number.get<std::int64_t>();
}

std::optional<DefaultsValue> decode(const json& member) {
    if (member.is_boolean()) return member.get<bool>();
    if (member.is_number()) return decodeNumber(member);
    if (member.is_string()) return member.get<std::string>();
    if (!member.is_object()) return std::nullopt;
    if (auto data = decodeData(member)) return std::move(*data);
    return decodeDictionary(member);
}

std::optional<json> parseMembers(const Result<std::string>& content) {
    if (!content || content.value().size() > kLargestFile) return std::nullopt;
    auto parsed = parseJson(content.value());
    return parsed && parsed->is_object() ? std::move(parsed) : std::nullopt;
}

}  // namespace

JsonDefaultsStore::JsonDefaultsStore(FileSystem& files, const RunLoop& clock,
                                     std::optional<std::filesystem::path> file, Report report)
    : files_(files), clock_(clock), file_(std::move(file)), report_(std::move(report)) {
    load();
}

void JsonDefaultsStore::load() {
    if (!file_) {
        report_("defaults: no folder for the settings; they last for this run");
        return;
    }
    if (!files_.exists(*file_)) return;
    const auto content = files_.read(*file_);
    if (auto members = parseMembers(content)) {
        members_ = std::move(*members);
        return;
    }
    report_(fmt::format("defaults: {} cannot be used ({})", file_->string(),
                        content ? "not a JSON object of reasonable size" : content.error().description));
    setAside();
}

void JsonDefaultsStore::setAside() {
    auto aside = *file_;
    aside += ".corrupt-" + localTimeText(clock_.wallNow(), "%Y%m%d-%H%M%S");
    const auto error = files_.move(*file_, aside);
    if (!error) return;
    report_(fmt::format("defaults: it cannot be moved aside either ({}); settings last for this run",
                        error->description));
    file_.reset();
}

std::optional<DefaultsValue> JsonDefaultsStore::value(std::string_view key) const {
    const auto member = members_.find(key);
    return member == members_.end() ? std::nullopt : decode(*member);
}

void JsonDefaultsStore::set(std::string_view key, DefaultsValue value) {
    members_[std::string(key)] = std::visit(Encoder(), value);
    write();
}

void JsonDefaultsStore::remove(std::string_view key) {
    if (members_.erase(std::string(key)) > 0) write();
}

void JsonDefaultsStore::write() {
    if (!file_) return;
    auto error = files_.createFolders(file_->parent_path());
    if (!error) {
        const auto text = members_.dump(4, ' ', false, json::error_handler_t::replace) + '\n';
        error = files_.writeAtomically(*file_, text);
    }
    if (error) report_(fmt::format("defaults: {} not written ({})", file_->string(), error->description));
}

std::optional<std::filesystem::path> defaultsFilePath(
    const std::optional<std::filesystem::path>& configurationFolder) {
    if (!configurationFolder) return std::nullopt;
    return *configurationFolder / "orvello" / "defaults.json";
}

}  // namespace platform::freedesktop
