#include "Tools/Campaign/RandomWork.h"

#include "Tests/Support/TemporaryFolder.h"
#include "Tools/Campaign/JobModel.h"

#include <algorithm>
#include <fstream>
#include <numeric>
#include <system_error>

namespace Campaign {

namespace fs = std::filesystem;

const std::vector<std::string> RandomWork::labels = {"org.example.a", "ORG.Example.b",
                                                     "net.other.c", "com.tarnwell.updater"};

const std::vector<RandomWork::Kind> RandomWork::kinds = {
    {"save", &RandomWork::saveAtomically, 20},
    {"write new", &RandomWork::writeNew, 8},
    {"edit", &RandomWork::editInPlace, 6},
    {"edit in pieces", &RandomWork::editInPieces, 6},
    {"rename", &RandomWork::rename, 12},
    {"move away", &RandomWork::moveAway, 6},
    {"copy", &RandomWork::copy, 8},
    {"link", &RandomWork::link, 6},
    {"remove", &RandomWork::remove, 14},
    {"permissions", &RandomWork::changePermissions, 8},
    {"folder permissions", &RandomWork::changeFolderPermissions, 2},
    {"subfolder", &RandomWork::makeSubfolder, 2},
    {"remove folder", &RandomWork::removeFolder, 1},
    {"make folder", &RandomWork::makeFolder, 2},
    {"replace folder", &RandomWork::replaceFolder, 1},
};

const std::vector<RandomWork::Kind> RandomWork::quietKinds = {
    {"edit", &RandomWork::editInPlace, 1},
    {"edit in pieces", &RandomWork::editInPieces, 1},
    {"permissions", &RandomWork::changePermissions, 1},
};

RandomWork::RandomWork(const TestSupport::AgentTrial& trial, std::mt19937_64& random)
    : trial_(trial)
    , random_(random)
    , folders_{trial.userAgents(), trial.library() / "LaunchAgents",
               trial.library() / "LaunchDaemons", trial.library() / "StartupItems",
               trial.library() / "PrivilegedHelperTools"} {}

void RandomWork::noteWatchedFolders() {
    std::ranges::transform(folders_, isWatched_.begin(), isReadable);
}

void RandomWork::change() {
    perform(kinds);
}

void RandomWork::changeQuietly() {
    perform(quietKinds);
}

void RandomWork::addFile() {
    const auto path = folders_[below(5)] / ("single-" + std::to_string(++number_));
    if (!fs::exists(path.parent_path()))
        return;
    const auto& label = labels[below(labels.size())];
    trial_.save(path, TestSupport::jobFile(label, "<!-- " + std::to_string(number_) + " -->"));
    note("add", path);
}

fs::path RandomWork::addMarker() {
    auto index = below(5);
    while (!isWatched_.at(index))
        index = (index + 1) % 5;
    fs::permissions(folders_[index], fs::perms::owner_all);
    auto path = folders_[index] / ("marker-" + std::to_string(++number_));
    trial_.save(path, path.string());
    return path;
}

std::vector<std::string> RandomWork::someOf(std::vector<std::string> texts) {
    std::erase_if(texts, [this](const auto&) { return below(3) != 0; });
    return texts;
}

void RandomWork::perform(const std::vector<Kind>& choice) {
    const auto all =
        std::accumulate(choice.begin(), choice.end(), std::size_t{0},
                        [](auto sum, const Kind& kind) { return sum + std::get<2>(kind); });
    auto point = below(all);
    auto kind = choice.begin();
    for (; point >= std::get<2>(*kind); ++kind)
        point -= std::get<2>(*kind);
    const auto& [name, action, weight] = *kind;
    try {
        (this->*action)();
    } catch (const std::exception&) { // of what cannot be done at the place, nothing comes
        note(name, "not done");
    }
}

void RandomWork::note(std::string_view what, const Path& path) {
    ++changes_;
    record_.append("  ").append(what).append(" ").append(path.string()).append("\n");
}

fs::path RandomWork::place() {
    static const std::vector<std::string> names = {
        "a.plist", "b.plist", "c",         "d d",           ".hidden",
        "e.plist", "f.plist", ".DS_Store", "net.other.job", "com.tarnwell.tool"};
    return folders_[below(5)] / names[below(names.size())];
}

fs::path RandomWork::someFile() {
    std::vector<Path> files;
    for (const auto& folder : folders_) {
        if (!fs::exists(folder))
            continue;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.is_regular_file())
                files.push_back(entry);
        }
    }
    std::ranges::sort(files);
    return files.empty() ? place() : files[below(files.size())];
}

std::string RandomWork::content() {
    const auto number = std::to_string(++number_);
    if (below(4) == 0)
        return below(4) == 0 ? "" : "text " + number;
    return TestSupport::jobFile(labels[below(labels.size())], "\t<!-- " + number + " -->\n");
}

void RandomWork::saveAtomically() {
    const auto path = place();
    trial_.save(path, content());
    note("save", path);
}

void RandomWork::writeNew() {
    const auto path = place();
    TestSupport::writeFile(path, content());
    note("write", path);
}

void RandomWork::editInPlace() {
    const auto path = someFile();
    if (!fs::exists(path))
        return;
    TestSupport::writeFile(path, content());
    note("edit", path);
}

void RandomWork::editInPieces() {
    const auto path = someFile();
    if (!fs::exists(path))
        return;
    const auto text = content();
    std::ofstream file(path, std::ios::trunc);
    for (std::size_t start = 0; start < text.size(); start += 100)
        file << std::string_view(text).substr(start, 100) << std::flush;
    note("edit in pieces", path);
}

void RandomWork::rename() {
    const auto from = someFile();
    const auto to = place();
    fs::rename(from, to);
    note("rename " + from.string() + " to", to);
}

void RandomWork::moveAway() {
    const auto path = someFile();
    fs::rename(path, trial_.elsewhere() / "away");
    note("move away", path);
}

void RandomWork::copy() {
    const auto from = someFile();
    const auto to = place();
    TestSupport::writeFile(to, TestSupport::contentOf(from));
    note("copy " + from.string() + " to", to);
}

void RandomWork::link() {
    const auto from = someFile();
    const auto to = place();
    fs::create_hard_link(from, to);
    note("link " + from.string() + " at", to);
}

void RandomWork::remove() {
    const auto path = someFile();
    if (!fs::remove(path))
        return;
    note("remove", path);
}

void RandomWork::changePermissions() {
    const auto path = someFile();
    fs::permissions(path, isReadable(path) ? fs::perms::none : fs::perms::owner_all);
    note("permissions", path);
}

void RandomWork::changeFolderPermissions() {
    const auto& path = folders_[below(5)];
    fs::permissions(path, isReadable(path) ? fs::perms::none : fs::perms::owner_all);
    note("folder permissions", path);
}

void RandomWork::makeSubfolder() {
    const auto path = folders_[below(5)] / ("folder " + std::to_string(++number_));
    fs::create_directory(path);
    TestSupport::writeFile(path / "within.plist", content());
    note("make", path);
}

// The last one that is watched stays, or nothing would be noticed any more.
void RandomWork::removeFolder() {
    const auto index = below(5);
    if (std::ranges::count(isWatched_, true) < 2 || !fs::exists(folders_[index]))
        return;
    fs::remove_all(folders_[index]);
    isWatched_.at(index) = false;
    note("remove folder", folders_[index]);
}

void RandomWork::makeFolder() {
    for (const auto& folder : folders_) {
        if (fs::create_directory(folder))
            note("make folder", folder);
    }
}

void RandomWork::replaceFolder() {
    const auto index = below(5);
    if (std::ranges::count(isWatched_, true) < 2)
        return;
    fs::rename(folders_[index], trial_.elsewhere() / ("folder" + std::to_string(++number_)));
    isWatched_.at(index) = false;
    fs::create_directory(folders_[index]);
    TestSupport::writeFile(folders_[index] / "a.plist", content());
    note("replace folder", folders_[index]);
}

} // namespace Campaign
