#include "Platform/Linux/Desktop/ActivationToken.h"

#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"

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
