#include "Platform/Linux/Desktop/ActivationToken.h"

#include "Platform/NeverDestroyed.h"

#include <mutex>
#include <utility>

namespace Platform {
namespace {

struct Token {
    std::mutex mutex;
    std::string text;
};

Token& current() {
    static const NeverDestroyed<Token> token;
    return token.get();
}

} // namespace

void setActivationToken(std::string token) {
    const std::lock_guard lock(current().mutex);
    current().text = std::move(token);
}

std::string takeActivationToken() {
    const std::lock_guard lock(current().mutex);
    return std::exchange(current().text, {});
}

} // namespace Platform
