#include "Platform/PropertyList/BinaryWriter.h"

#include "Platform/PropertyList/BinaryObjects.h"
#include "Platform/PropertyList/TextEncodings.h"

#include <utility>

namespace Platform::PropertyLists {

bool BinaryWriter::beginDictionary() {
    open_.push_back({true, {}, {}});
    return true;
}

bool BinaryWriter::endDictionary() {
    return close();
}

bool BinaryWriter::beginArray() {
    open_.push_back({false, {}, {}});
    return true;
}

bool BinaryWriter::endArray() {
    return close();
}

bool BinaryWriter::close() {
    closed_.push_back(std::move(open_.back()));
    open_.pop_back();
    objects_.emplace_back(closed_.size() - 1);
    add(objects_.size() - 1);
    return true;
}

bool BinaryWriter::scalar(const Scalar& scalar) {
    textKind_ = TextKind::string;
    addUnique(binaryScalar(scalar));
    return true;
}

bool BinaryWriter::beginText(TextKind kind) {
    textKind_ = kind;
    text_.clear();
    return true;
}

bool BinaryWriter::text(std::string_view piece) {
    text_.append(piece);
    return true;
}

bool BinaryWriter::endText() {
    auto bytes = textKind_ == TextKind::data ? binaryData(text_) : binaryText(text_);
    if (!bytes)
        return false;
    addUnique(std::move(*bytes));
    return true;
}

void BinaryWriter::addUnique(std::string bytes) {
    const auto [place, isNew] = unique_.try_emplace(std::move(bytes), objects_.size());
    if (isNew)
        objects_.emplace_back(std::string_view(place->first));
    add(place->second);
}

void BinaryWriter::add(Reference reference) {
    if (open_.empty())
        return;
    const bool isKey = std::exchange(textKind_, TextKind::string) == TextKind::key;
    (isKey ? open_.back().keys : open_.back().values).push_back(reference);
}

std::string BinaryWriter::takeList() {
    constexpr std::size_t numberSize = 8;
    std::string list = "bplist00";
    const auto referenceSize = smallestSize(objects_.size());
    std::vector<std::size_t> offsets;
    offsets.reserve(objects_.size());
    for (const auto& object : objects_) {
        offsets.push_back(list.size());
        if (const auto* const bytes = std::get_if<std::string_view>(&object)) {
            list.append(*bytes);
            continue;
        }
        const auto& container = closed_[std::get<std::size_t>(object)];
        const auto kind = container.isDictionary ? BinaryKind::dictionary : BinaryKind::array;
        appendBeginning(list, kind, container.values.size());
        for (const auto* const references : {&container.keys, &container.values}) {
            for (const auto reference : *references)
                appendBigEndian(list, reference, referenceSize);
        }
    }
    const auto tableBegin = list.size();
    const auto offsetSize = smallestSize(tableBegin);
    for (const auto offset : offsets)
        appendBigEndian(list, offset, offsetSize);
    list.append(6, '\0');
    list.push_back(static_cast<char>(offsetSize));
    list.push_back(static_cast<char>(referenceSize));
    appendBigEndian(list, objects_.size(), numberSize);
    appendBigEndian(list, objects_.size() - 1, numberSize); // the root is closed last
    appendBigEndian(list, tableBegin, numberSize);
    return list;
}

} // namespace Platform::PropertyLists
