#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Native/ObservedSetting.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <vector>

namespace Platform {

/// The value under the key, wherever the domain has it from.
std::optional<PropertyList> valueIn(NSUserDefaults* defaults, std::string_view key);

/// A key of a domain, and who wants to hear of it.
class ObservedKey {
public:
    /// From here on the system reports changes to `Observations`.
    ObservedKey(NSUserDefaults* defaults, const std::string& keyPath,
                UserDefaults::Handler handler);
    ~ObservedKey();
    ObservedKey(const ObservedKey&) = delete;
    ObservedKey& operator=(const ObservedKey&) = delete;
    ObservedKey(ObservedKey&&) = delete;
    ObservedKey& operator=(ObservedKey&&) = delete;

    /// Tells of the present value. On the queue of `Observations`.
    void tell();

    void silence() { setting_.silence(); }

private:
    NSUserDefaults* const defaults_; // kept, or the system would report nothing any more
    NSString* const key_;
    ObservedSetting setting_;
    bool isRegistered_ = false;
};

/// All observed keys of this process. Callable on any thread; handlers run on the queue.
class Observations {
public:
    static Observations& shared();

    void add(std::shared_ptr<ObservedKey> key);
    void remove(const std::shared_ptr<ObservedKey>& key);

    /// Has the values compared: one of them may have changed.
    void look();

private:
    const DispatchQueue queue_ = DispatchQueue::serial("com.tarnwell.UserDefaults");
    std::vector<std::shared_ptr<ObservedKey>> keys_; // on the queue only
};

} // namespace Platform
