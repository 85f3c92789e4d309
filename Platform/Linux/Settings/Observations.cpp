#include "Platform/Linux/Settings/Observations.h"

#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/Linux/Settings/RegisteredDefaults.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>

#include <map>
#include <utility>

namespace Platform {

ObservedKey::ObservedKey(DomainFile file, const std::string& keyPath, UserDefaults::Handler handler)
    : file_(std::move(file))
    , setting_(keyPath, std::move(handler), RegisteredDefaults::lookUp(file_.values(), keyPath)) {}

void ObservedKey::tell(const PropertyList::Dictionary& values) {
    setting_.tell(RegisteredDefaults::lookUp(values, setting_.keyPath()));
}

Observations& Observations::shared() {
    static const NeverDestroyed<Observations> observations;
    return observations.get();
}

Observations::Observations()
    : strand_(asio::make_strand(workerExecutor())) {}

void Observations::add(std::shared_ptr<ObservedKey> key) {
    asio::post(strand_, [this, key = std::move(key)] {
        keys_.push_back(key);
        watch();
    });
}

void Observations::remove(const std::shared_ptr<ObservedKey>& key) {
    asio::post(strand_, [this, key] {
        std::erase(keys_, key);
        watch();
    });
}

void Observations::look() {
    asio::post(strand_, [this] { compareAll(); });
}

void Observations::watch() {
    std::set<std::filesystem::path> files;
    for (const auto& key : keys_) {
        if (!key->file().path().empty())
            files.insert(key->file().path());
    }
    watch_.reset();
    if (!files.empty()) {
        watch_ = FileWatch::start(strand_, files, [this] { watch(); });
    }
    compareAll();
}

void Observations::compareAll() {
    std::map<std::filesystem::path, PropertyList::Dictionary> read; // each file once
    for (const auto& key : keys_) {
        const auto& path = key->file().path();
        auto found = read.find(path);
        if (found == read.end())
            found = read.emplace(path, key->file().values()).first;
        key->tell(found->second);
    }
}

} // namespace Platform
