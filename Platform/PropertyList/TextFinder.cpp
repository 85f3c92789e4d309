#include "Platform/PropertyList/TextFinder.h"

#include <utility>

namespace Platform::PropertyLists {

bool TextFinder::beginDictionary() {
    const bool good = beginValue();
    ++depth_;
    return good;
}

bool TextFinder::endDictionary() {
    --depth_;
    return true;
}

bool TextFinder::beginArray() {
    const bool good = depth_ > 0 && beginValue();
    ++depth_;
    return good;
}

bool TextFinder::endArray() {
    --depth_;
    return true;
}

bool TextFinder::scalar(const Scalar& /*scalar*/) {
    return depth_ > 0 && beginValue();
}

bool TextFinder::beginValue() {
    // The last value under a key is the one that counts, whatever it is.
    if (depth_ == 1 && std::exchange(isWanted_, false))
        result_.reset();
    return cost_.chargeValue();
}

bool TextFinder::beginText(TextKind kind) {
    use_ = Use::none;
    if (kind == TextKind::key) {
        if (depth_ == 1) {
            use_ = Use::compare;
            unmatched_ = key_;
            matches_ = true;
        }
        return cost_.chargeEntry();
    }
    const bool isWanted = depth_ == 1 && isWanted_;
    const bool good = depth_ > 0 && beginValue();
    if (isWanted && kind == TextKind::string) {
        use_ = Use::keep;
        isFull_ = false;
        result_.emplace();
    }
    return good;
}

bool TextFinder::text(std::string_view piece) {
    if (use_ == Use::keep)
        keep(piece);
    if (use_ == Use::compare)
        compare(piece);
    return cost_.charge(piece.size());
}

bool TextFinder::endText() {
    if (use_ == Use::compare)
        isWanted_ = matches_ && unmatched_.empty();
    return true;
}

void TextFinder::compare(std::string_view piece) {
    matches_ = matches_ && unmatched_.starts_with(piece);
    if (matches_)
        unmatched_.remove_prefix(piece.size());
}

void TextFinder::keep(std::string_view piece) {
    if (isFull_ || !result_)
        return;
    auto length = piece.size();
    if (const auto room = maximumText_ - result_->size(); length > room) {
        isFull_ = true;
        length = room;
        const auto continues = [&] { return (piece[length] & '\xC0') == '\x80'; };
        while (length > 0 && continues())
            --length;
    }
    result_->append(piece.substr(0, length));
}

} // namespace Platform::PropertyLists
