#include "Platform/Linux/Settings/DomainFile.h"

#include "Platform/FileContents.h"
#include "Platform/FileManager.h"
#include "Platform/Linux/Settings/FileReplacement.h"
#include "Platform/PropertyList/Form.h"
#include "Platform/URL.h"

#include <string_view>

namespace Platform {
namespace {

constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;

// The file keeps its form, but for the old-style one, which is never written.
PropertyList::Format formatFor(const std::vector<std::byte>& bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto form = PropertyLists::formOf(text.substr(0, PropertyLists::formWindow), true);
    return form && form->format == PropertyList::Format::binary ? PropertyList::Format::binary
                                                                : PropertyList::Format::xml;
}

} // namespace

PropertyList::Dictionary DomainFile::values() const {
    auto content = read();
    return content ? std::move(content->values) : PropertyList::Dictionary{};
}

void DomainFile::change(const std::function<void(PropertyList::Dictionary&)>& edit) const {
    if (path_.empty())
        return;
    FileManager::createDirectory(URL::file(path_.parent_path().native()));
    const auto lock = lockBeside(path_);
    if (!lock)
        return;
    auto content = read();
    if (!content)
        return;
    const auto before = content->values;
    edit(content->values);
    if (content->values != before)
        write(*content);
}

std::optional<DomainFile::Content> DomainFile::read() const {
    std::error_code failure;
    if (path_.empty() ||
        std::filesystem::status(path_, failure).type() == std::filesystem::file_type::not_found)
        return Content{};
    const auto bytes = FileContents::read(URL::file(path_.native()), largestFile);
    if (!bytes)
        return std::nullopt;
    Content content{.values = {}, .format = formatFor(*bytes)};
    auto list = PropertyList::read(*bytes);
    if (auto* values = list ? std::get_if<PropertyList::Dictionary>(&list->value()) : nullptr)
        content.values = std::move(*values);
    return content;
}

void DomainFile::write(const Content& content) const {
    const PropertyList list(content.values);
    auto bytes = list.write(content.format);
    if (!bytes) // a text, say, that XML has no characters for
        bytes = list.write(PropertyList::Format::binary);
    if (bytes && bytes->size() <= largestFile)
        replaceFile(path_, *bytes);
}

} // namespace Platform
