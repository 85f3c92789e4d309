// The user's settings seen from outside: what the agent leaves out, and from when on.

#include "Tests/EndToEnd/AgentTest.h"

namespace {

namespace fs = std::filesystem;

class Settings : public AgentTest {
protected:
    void store(const std::string& exceptions, const std::string& excludePrefixes) const {
        fs::create_directories(file.parent_path());
        trial.save(file, "<plist><dict><key>Exceptions</key>" + exceptions +
                             "<key>ExcludePrefixes</key>" + excludePrefixes + "</dict></plist>");
    }

    // Nothing reports that the agent took up a change, but it rests only when it has.
    void letItComeToRest() const { ASSERT_TRUE(trial.waitUntilAtRest()); }

    // Of these jobs the agent speaks only of the first, when they are added and when they are
    // deleted. The first comes first by name too, so that any other's deletion would take its
    // place.
    void expectOnlyTheFirst(const std::vector<std::string>& labels) {
        for (const auto& label : labels)
            trial.save(job(label + " file"), TestSupport::jobFile(label));
        expectNext("New: " + agents + labels.front() + " file");
        for (const auto& label : labels)
            fs::remove(job(label + " file"));
        expectNext("Deleted: " + agents + labels.front() + " file");
    }

    const fs::path file = trial.home() / ".config/tarnwell/QX42K7M3ZP.com.tarnwell.Vesper.plist";
};

TEST_F(Settings, AreFollowedWithoutARestart) {
    start();
    expectOnlyTheFirst({"a"});
    store("<array><string>a</string><string>b</string></array>",
          "<string>ORG.example</string>"); // one text is no list
    letItComeToRest();
    expectOnlyTheFirst({"A", "a", "b"});
    expectOnlyTheFirst({"org.Example.x"});
    fs::remove(file);
    letItComeToRest();
    expectOnlyTheFirst({"a"});
}

TEST_F(Settings, NoPlaceForThemFiltersNothing) {
    trial.environment["XDG_CONFIG_HOME"] = "/dev/null";
    start();
    expectOnlyTheFirst({"a"});
}

} // namespace
