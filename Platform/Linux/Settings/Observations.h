#pragma once

#include "Platform/Linux/Settings/DomainFile.h"
#include "Platform/Linux/Settings/FileWatch.h"
#include "Platform/Native/ObservedSetting.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Platform {

/// A key of a domain, and who wants to hear of it.
class ObservedKey {
public:
    ObservedKey(DomainFile file, const std::string& keyPath, UserDefaults::Handler handler);

    const DomainFile& file() const { return file_; }

    /// Tells of the value among those of the domain. On the strand of `Observations`.
    void tell(const PropertyList::Dictionary& values);

    void silence() { setting_.silence(); }

private:
    const DomainFile file_;
    ObservedSetting setting_;
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
