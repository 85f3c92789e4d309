#pragma once

#include "Platform/Linux/UserDefaults/DomainFile.h"
#include "Platform/Linux/UserDefaults/FileWatch.h"
#include "Platform/UserDefaults.h"

#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Platform {

/// A key of a domain, and who wants to hear of it.
class ObservedKey {
public:
    /// What is stored now counts as told.
    ObservedKey(DomainFile file, std::string keyPath, UserDefaults::Handler handler);

    const DomainFile& file() const { return file_; }

    /// Calls the handler if the value is not the one told last. On the strand of `Observations`.
    void compare(const PropertyList::Dictionary& values);

    /// Waits for a handler under way, unless called by it; none starts afterwards.
    void silence();

private:
    const DomainFile file_;
    const std::string keyPath_;
    const UserDefaults::Handler handler_;
    std::optional<PropertyList> told_; // the strand of Observations

    std::recursive_mutex mutex_; // held while the handler runs, which may silence itself
    bool isSilent_ = false;      // mutex_
};

/// All observed keys of this process, behind one watch for all their files; without observed keys
/// no descriptor is open. Callable on any thread; handlers run on the strand.
class Observations {
public:
    static Observations& shared();

    Observations();

    void add(std::shared_ptr<ObservedKey> key);
    void remove(const std::shared_ptr<ObservedKey>& key);

    /// Has the values compared: they may have changed without a file's doing.
    void look();

private:
    /// Watches the files anew, then compares: what the watch before has not told is seen here.
    void watch();
    void compareAll();

    const FileWatch::Strand strand_;

    // On the strand only.
    std::vector<std::shared_ptr<ObservedKey>> keys_;
    std::shared_ptr<FileWatch> watch_;
};

} // namespace Platform
