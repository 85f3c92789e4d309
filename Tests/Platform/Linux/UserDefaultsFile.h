#pragma once

#include "Tests/Platform/UserDefaultsSuite.h"

#include <string>

namespace TestSupport {

inline std::string settings(const std::string& key, const std::string& text) {
    return "<plist><dict><key>" + key + "</key><string>" + text +
           "</string><key>Other</key><true/></dict></plist>";
}

/// The file of the fixture's suite.
template <class Fixture>
class WithFile : public Fixture {
protected:
    void makeFolder() const { fs::create_directories(file.parent_path()); }

    std::string content() const { return contentOf(file); }

    const fs::path file = this->configuration / "tarnwell" / (this->suiteName + ".plist");
};

} // namespace TestSupport
