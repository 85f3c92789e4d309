#include "Benchmarks/Worker.h"
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/LineEnding.h"
#include "CorbelKit/Formats/StringEncoding.h"
#include "CorbelKit/Services/UserDataFile.h"
#include "Platform/PropertyList.h"
#include "Tests/Support/TemporaryFolder.h"

#include <memory>
#include <span>

namespace Benchmarks {
namespace {

using Platform::PropertyList;

/// property-list FILE: read into values.
Turn preparePropertyList(const std::vector<std::string>& arguments) {
    return [content = TestSupport::contentOf(arguments.at(0))] {
        std::optional<PropertyList> list;
        const auto seconds = secondsOf([&] {
            list = PropertyList::read(std::as_bytes(std::span(content)),
                                      PropertyList::Limits::ofOwnFiles());
        });
        require(list.has_value(), "no property list");
        return Figures{{"seconds", seconds}};
    };
}

/// line-endings FROM TO: a file's, made those of Windows in another.
Turn prepareLineEndings(const std::vector<std::string>& arguments) {
    return [arguments] {
        return Figures{{"seconds", secondsOf([&] {
                            const auto text =
                                CorbelKit::converted(TestSupport::contentOf(arguments.at(0)),
                                                     CorbelKit::LineEnding::windows);
                            TestSupport::writeFile(arguments.at(1), text);
                        })}};
    };
}

/// encoding FILE: what it claims for itself, where it is UTF-8 throughout.
Turn prepareEncoding(const std::vector<std::string>& arguments) {
    return [path = arguments.at(0)] {
        return Figures{{"seconds", secondsOf([&] {
                            const auto text = TestSupport::contentOf(path);
                            CorbelKit::guessEncoding(std::as_bytes(std::span(text)));
                        })}};
    };
}

struct Item {
    static Item decode(const CorbelKit::Decoder& decoder) {
        return {.text = decoder.container().decode<std::string>("text")};
    }

    void encode(CorbelKit::Encoder& encoder) const { encoder.container().encode("text", text); }

    std::string text;
};

/// user-data ITEMS: encoded and written to a file, and read and decoded again.
Turn prepareUserData(const std::vector<std::string>& arguments) {
    std::vector<Item> items(std::stoul(arguments.at(0)));
    for (std::size_t index = 0; index < items.size(); ++index)
        items[index].text = "Item " + std::to_string(index) + " of what the user keeps";
    const auto folder = std::make_shared<TestSupport::TemporaryFolder>();
    return [items = std::move(items), folder] {
        using namespace CorbelKit;
        const auto url = Platform::URL::file((*folder / "Items.plist").string());
        const auto save = secondsOf([&] {
            const auto data = PropertyListEncoder::binary().encode(items);
            require(data && !UserDataFile::write(*data, url, "Benchmark"), "items were not saved");
        });
        std::size_t count = 0;
        const auto load = secondsOf([&] { count = UserDataFile::load<Item>(url)->size(); });
        require(count == items.size(), "items were not loaded");
        return Figures{{"seconds", save + load}, {"save", save}, {"load", load}};
    };
}

} // namespace

Works formatWorks() {
    return {{"property-list", preparePropertyList},
            {"line-endings", prepareLineEndings},
            {"encoding", prepareEncoding},
            {"user-data", prepareUserData}};
}

} // namespace Benchmarks
