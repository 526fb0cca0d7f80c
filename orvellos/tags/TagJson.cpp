#include "orvellos/tags/TagJson.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "orvellos/base/PrettyJson.h"
#include "platform/JsonText.h"

namespace orvellos {

namespace {

using nlohmann::json;
using platform::Rect;

bool isFinite(const Rect& rect) {
    return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) &&
           std::isfinite(rect.height);
}

// Builds the tags while their text is read, without a tree of JSON values in between. Each operation answers
// whether the text can still be a tag file.
class TagReader final : public nlohmann::json_sax<json> {
  public:
    std::vector<Tag> tags;

    bool null() override {
        if (isIgnored()) return true;
        if (depth_ != kInTag) return false;
        if (member_ == Member::Frame) tags.back().frame.reset();
        if (member_ == Member::SpaceUUID) tags.back().spaceUUID.reset();
        return member_ == Member::Frame || member_ == Member::SpaceUUID;
    }
    bool boolean(bool /*value*/) override { return isIgnored(); }
    bool number_integer(std::int64_t value) override { return number(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) override { return number(static_cast<double>(value)); }
    bool number_float(double value, const std::string& /*text*/) override { return number(value); }
    bool binary(json::binary_t& /*value*/) override { return false; }

    bool string(std::string& text) override {
        if (isIgnored()) return true;
        if (depth_ != kInTag || !storeText(text)) return false;
        has_[static_cast<std::size_t>(member_)] = true;
        return true;
    }

    bool start_object(std::size_t /*elements*/) override {
        ++depth_;
        if (depth_ != kInTag) return depth_ > kInTag && goesDeeper();
        tags.emplace_back();
        has_ = {};
        return true;
    }
    bool key(std::string& name) override {
        if (depth_ == kInTag) member_ = memberNamed(name);
        return true;
    }
    bool end_object() override {
        return depth_-- != kInTag ||
               (has_[static_cast<std::size_t>(Member::Id)] && has_[static_cast<std::size_t>(Member::Label)] &&
                has_[static_cast<std::size_t>(Member::ColorHex)]);
    }

    bool start_array(std::size_t /*elements*/) override {
        ++depth_;
        if (depth_ <= kInTag) return depth_ < kInTag;
        if (member_ != Member::Frame) return goesDeeper();
        if (depth_ == kInFrame) numbers_ = pairs_ = 0;
        if (depth_ == kInPair) ++pairs_;
        return depth_ <= kInPair;
    }
    bool end_array() override {
        const auto ended = depth_--;
        if (ended < kInTag || member_ != Member::Frame) return true;
        if (ended == kInPair) return numbers_ == 2 * pairs_;
        tags.back().frame = Rect{frame_[0], frame_[1], frame_[2], frame_[3]};
        return pairs_ == 2;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

  private:
    enum class Member { Id, Label, ColorHex, Frame, SpaceUUID, Other };
    // How many arrays and objects are open inside a tag, its frame, and one of the frame's two pairs.
    static constexpr std::size_t kInTag = 2;
    static constexpr std::size_t kInFrame = 3;
    static constexpr std::size_t kInPair = 4;

    static Member memberNamed(std::string_view name) {
        constexpr std::array<std::string_view, 5> names = {"id", "label", "colorHex", "frame", "spaceUUID"};
        return static_cast<Member>(std::ranges::find(names, name) - names.begin());
    }

    [[nodiscard]] bool isIgnored() const { return depth_ >= kInTag && member_ == Member::Other; }
    [[nodiscard]] bool goesDeeper() const { return isIgnored() && depth_ <= platform::kDeepestJson; }

    bool storeText(const std::string& text) {
        auto& tag = tags.back();
        if (member_ == Member::Id) {
            const auto id = TagID::parse(text);
            if (id) tag.id = *id;
            return id.has_value();
        }
        if (member_ == Member::Label) tag.label = text;
        if (member_ == Member::ColorHex) tag.colorHex = text;
        if (member_ == Member::SpaceUUID) tag.spaceUUID = text;
        return member_ != Member::Frame;
    }

    bool number(double value) {
        if (isIgnored()) return true;
        if (depth_ != kInPair || numbers_ == frame_.size()) return false;
        frame_[numbers_++] = value;
        return true;
    }

    std::size_t depth_ = 0;
    Member member_ = Member::Other;
    std::array<bool, 6> has_{};  // by member
    std::array<double, 4> frame_{};
    std::size_t numbers_ = 0;  // of the frame, so far
    std::size_t pairs_ = 0;
};

json toJson(const Tag& tag) {
    json value = {{"id", tag.id.text()}, {"label", tag.label}, {"colorHex", tag.colorHex}};
    if (tag.frame) value["frame"] = {{tag.frame->x, tag.frame->y}, {tag.frame->width, tag.frame->height}};
    if (tag.spaceUUID) value["spaceUUID"] = *tag.spaceUUID;
    return value;
}

}  // namespace

platform::Result<std::string> encodeTags(const std::vector<Tag>& tags) {
    json array = json::array();
    for (const auto& tag : tags) {
        if (tag.frame && !isFinite(*tag.frame))
            return platform::Error{"encode: The frame of tag " + tag.id.text() + " is not finite"};
        array.push_back(toJson(tag));
    }
    return prettyJson(array);
}

std::optional<std::vector<Tag>> decodeTags(std::string_view text) {
    TagReader reader;
    if (!json::sax_parse(text, &reader)) return std::nullopt;
    return std::move(reader.tags);
}

}  // namespace orvellos
