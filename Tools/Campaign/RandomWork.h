#pragma once

#include "Tests/Support/Linux/AgentTrial.h"

#include <array>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace Campaign {

/// Random work on the five folders of a trial, as people, installers and editors do it.
class RandomWork {
public:
    RandomWork(const TestSupport::AgentTrial& trial, std::mt19937_64& random);

    /// In the agent's order.
    const std::vector<std::filesystem::path>& folders() const { return folders_; }

    /// To be called before the agent starts: what it then can watch is what it watches.
    void noteWatchedFolders();

    /// Some change of any kind.
    void change();

    /// Some change that writes no entry of a folder: it is noticed with the next one that does.
    void changeQuietly();

    /// A file unlike any other, which no later change touches: it is notified whenever it is
    /// noticed.
    void addFile();

    /// A file whose notification is never filtered, in a folder that is watched; gives the path.
    std::filesystem::path addMarker();

    /// What was done since this was asked last, a line each.
    std::string takeRecord() { return std::exchange(record_, {}); }

    int changes() const { return changes_; }

    /// A number below the limit.
    std::size_t below(std::size_t limit) { return random_() % limit; }

    /// Some of the texts.
    std::vector<std::string> someOf(std::vector<std::string> texts);

    static const std::vector<std::string> labels;

private:
    using Path = std::filesystem::path;

    /// A name, an action, and how often it has its turn.
    using Kind = std::tuple<std::string_view, void (RandomWork::*)(), std::size_t>;

    static const std::vector<Kind> kinds, quietKinds;

    void perform(const std::vector<Kind>& choice);
    void note(std::string_view what, const Path& path);
    Path place();
    Path someFile();
    std::string content();

    void saveAtomically();
    void writeNew();
    void editInPlace();
    void editInPieces();
    void rename();
    void moveAway();
    void copy();
    void link();
    void remove();
    void changePermissions();
    void changeFolderPermissions();
    void makeSubfolder();
    void removeFolder();
    void makeFolder();
    void replaceFolder();

    const TestSupport::AgentTrial& trial_;
    std::mt19937_64& random_;
    std::vector<Path> folders_;
    std::array<bool, 5> isWatched_{};
    std::string record_;
    int changes_ = 0;
    int number_ = 0;
};

} // namespace Campaign
