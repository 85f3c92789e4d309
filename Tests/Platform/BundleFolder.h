#pragma once

#include "Platform/Bundle.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

inline std::string propertyList(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + content +
           "</dict></plist>";
}

inline std::string entry(const std::string& key, const std::string& text) {
    return "<key>" + key + "</key><string>" + text + "</string>";
}

/// A bundle folder that a test fills.
class BundleFolder {
public:
    void write(const std::string& path, const std::string& content) {
        std::filesystem::create_directories((folder_ / path).parent_path());
        TestSupport::writeFile(folder_ / path, content);
    }

    /// Adds a localisation whose text "Language" is its own name.
    void localize(const std::string& name) {
        write("Resources/" + name + ".lproj/Localizable.strings",
              propertyList(entry("Language", name)));
    }

    Platform::Bundle open() const {
        return Platform::Bundle(Platform::URL::file(folder_.path().string() + "/"));
    }

    const std::filesystem::path& path() const { return folder_.path(); }

private:
    TestSupport::TemporaryFolder folder_;
};

/// The user's languages, in the form of a list of locales.
class Languages {
public:
    explicit Languages(const std::string& list)
        : all_("LC_ALL", list.substr(0, list.find(':')))
        , list_("LANGUAGE", list) {}

private:
    TestSupport::EnvironmentVariable all_;
    TestSupport::EnvironmentVariable list_;
};
