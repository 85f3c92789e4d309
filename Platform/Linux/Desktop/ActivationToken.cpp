#include "Platform/Linux/Desktop/ActivationToken.h"

#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"

#include <cstddef>
#include <utility>

namespace Platform {
namespace {

struct Token {
    Mutex mutex;
    std::string text CORBEL_GUARDED_BY(mutex);
};

Token& current() {
    static const NeverDestroyed<Token> token;
    return token.get();
}

} // namespace

void setActivationToken(std::string token) {
    constexpr std::size_t longest = 4096; // in bytes; no program starts with a huge environment
    if (token.size() > longest)
        token.clear();
    auto& latest = current();
    const MutexLock lock(latest.mutex);
    latest.text = std::move(token);
}

std::string takeActivationToken() {
    auto& latest = current();
    const MutexLock lock(latest.mutex);
    return std::exchange(latest.text, {});
}

} // namespace Platform
