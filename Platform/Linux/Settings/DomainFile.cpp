#include "Platform/Linux/Settings/DomainFile.h"

#include "Platform/FileContents.h"
#include "Platform/FileManager.h"
#include "Platform/Linux/Loops/SignalsElsewhere.h"
#include "Platform/Linux/Settings/FileLock.h"
#include "Platform/Log.h"
#include "Platform/PropertyList/Form.h"

#include <string_view>

namespace Platform {
namespace {

// Far above what settings are for: each program that follows them reads them all.
constexpr std::size_t largestFile = std::size_t{256} << 20U;
constexpr PropertyList::Limits writingLimits{.cost = largestFile};
constexpr PropertyList::Limits readingLimits{.cost = 2 * writingLimits.cost};

// The file keeps its form, but for the old-style one, which is never written.
PropertyList::Format formatFor(const std::vector<std::byte>& bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto form = PropertyLists::formOf(text.substr(0, PropertyLists::formWindow), true);
    return form && form->format == PropertyList::Format::binary ? PropertyList::Format::binary
                                                                : PropertyList::Format::xml;
}

std::optional<Error> setAside(const URL& file) {
    const auto message = FileContents::setAside(file);
    if (!message)
        return message.error();
    if (!message->empty())
        log(*message);
    return std::nullopt;
}

} // namespace

PropertyList::Dictionary DomainFile::values() const {
    const SignalsElsewhere elsewhere;
    auto content = readContent();
    return content ? std::move(content->values) : PropertyList::Dictionary{};
}

Expected<std::optional<PropertyList::Dictionary>> DomainFile::read() const {
    if (FileContents::isMissing(url()))
        return std::optional<PropertyList::Dictionary>();
    auto content = readContent();
    if (!content)
        return content.error();
    if (!content->isUnderstood)
        return Error{path_.native() + ": not a property list of settings"};
    return std::optional(std::move(content->values));
}

std::optional<Error>
DomainFile::change(const std::function<void(PropertyList::Dictionary&)>& edit) const {
    if (path_.empty())
        return Error{"there is no place to keep settings in"};
    FileManager::createDirectory(URL::file(path_.parent_path().native()));
    const auto lock = lockBeside(path_);
    if (!lock)
        return lock.error();
    auto content = readContent();
    if (!content)
        return content.error();
    const auto before = content->values;
    edit(content->values);
    return content->values == before ? std::nullopt : write(std::move(*content));
}

Expected<DomainFile::Content> DomainFile::readContent() const {
    if (path_.empty() || FileContents::isMissing(url()))
        return Content{};
    const auto bytes = FileContents::read(url(), largestFile);
    if (!bytes)
        return bytes.error();
    Content content{.values = {}, .format = formatFor(*bytes), .isUnderstood = bytes->empty()};
    auto list = PropertyList::read(*bytes, readingLimits);
    if (auto* values = list ? std::get_if<PropertyList::Dictionary>(&list->value()) : nullptr) {
        content.values = std::move(*values);
        content.isUnderstood = true;
    }
    return content;
}

std::optional<Error> DomainFile::write(Content content) const {
    const PropertyList list(std::move(content.values));
    auto bytes = list.write(content.format, writingLimits);
    if (!bytes) // a text, say, that XML has no characters for
        bytes = list.write(PropertyList::Format::binary, writingLimits);
    if (!bytes)
        return Error{path_.native() + ": " + bytes.error().description};
    if (bytes->size() > largestFile)
        return Error{path_.native() + ": too large for settings"};
    return FileContents::replace(url(), *bytes,
                                 content.isUnderstood ? FileContents::MakeRoom() : setAside,
                                 FileContents::NewFile::forUserAlone);
}

} // namespace Platform
