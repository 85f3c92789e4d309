#include "Platform/PropertyListLookup.h"

#include "Platform/PropertyList/BinaryReader.h"
#include "Platform/PropertyList/Form.h"
#include "Platform/PropertyList/TextFinder.h"
#include "Platform/PropertyList/TextReader.h"
#include "Platform/PropertyList/XMLReader.h"

#include <utility>

namespace Platform {

using PropertyLists::characters;
using Format = PropertyList::Format;

class PropertyListLookup::Impl {
public:
    Impl(std::string_view key, Limits limits)
        : limits_(limits)
        , finder_(key, limits.maximumText) {}

    bool append(std::string_view bytes) {
        if (!failed_ && format_ != Format::xml)
            bytes = beginOrKeep(bytes);
        failed_ = failed_ || (xml_ && !xml_->append(bytes));
        return !failed_;
    }

    std::optional<std::string> finish() {
        const auto format = format_ ? format_ : begin(kept_, true);
        if (failed_ || !format || !readRest(*format))
            return std::nullopt;
        return finder_.takeResult();
    }

private:
    static constexpr std::size_t trialWindow = std::size_t{16} * 1024;

    /// What is left for the XML reader.
    std::string_view beginOrKeep(std::string_view bytes) {
        // Most files come whole, or their beginning is enough: nothing is copied then.
        if (!format_ && kept_.empty() && begin(bytes, false) == Format::xml)
            return bytes.substr(begin_);
        if (bytes.size() > limits_.maximumBuffered - kept_.size()) {
            failed_ = true;
            return {};
        }
        kept_.append(bytes);
        failed_ = isRefusedText();
        if (failed_ || format_ || begin(kept_, false) != Format::xml)
            return {};
        return std::string_view(kept_).substr(begin_);
    }

    std::optional<Format> begin(std::string_view bytes, bool complete) {
        if (const auto form = PropertyLists::formOf(bytes, complete)) {
            format_ = form->format;
            begin_ = form->begin;
            if (format_ == Format::xml)
                xml_.emplace(finder_, limits_.depth);
        }
        return format_;
    }

    /// Whether the beginning, looked at once, shows that nothing behind it makes it a list. Files
    /// of all kinds count as the old-style form until then.
    bool isRefusedText() {
        if (format_ != Format::text || wasTried_ || kept_.size() < trialWindow)
            return false;
        wasTried_ = true;
        auto trial = finder_;
        const auto beginning = std::string_view(kept_).substr(0, trialWindow);
        return !PropertyLists::mayBeginText(beginning, trial, limits_.depth);
    }

    bool readRest(Format format) {
        switch (format) {
        case Format::xml:
            return xml_ && xml_->finish();
        case Format::binary:
            finder_.limitCost(PropertyList::Limits().cost);
            return PropertyLists::readBinary(kept_, finder_, limits_.depth);
        case Format::text:
            return PropertyLists::readText(kept_, finder_, limits_.depth);
        }
        return false;
    }

    Limits limits_;
    PropertyLists::TextFinder finder_;
    std::optional<Format> format_;
    std::size_t begin_ = 0;
    bool wasTried_ = false; ///< as the old-style form
    std::string kept_;      ///< until the form is known, and of a form that is read whole
    std::optional<PropertyLists::XMLReader> xml_;
    bool failed_ = false;
};

PropertyListLookup::PropertyListLookup(std::string_view key)
    : PropertyListLookup(key, Limits()) {}

PropertyListLookup::PropertyListLookup(std::string_view key, Limits limits)
    : impl_(std::make_unique<Impl>(key, limits)) {}

PropertyListLookup::~PropertyListLookup() = default;
PropertyListLookup::PropertyListLookup(PropertyListLookup&&) noexcept = default;
PropertyListLookup& PropertyListLookup::operator=(PropertyListLookup&&) noexcept = default;

bool PropertyListLookup::append(std::span<const std::byte> bytes) {
    return impl_->append(characters(bytes));
}

std::optional<std::string> PropertyListLookup::finish() {
    return impl_->finish();
}

} // namespace Platform
