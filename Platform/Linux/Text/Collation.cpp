#include "Platform/NeverDestroyed.h"
#include "Platform/TextServices.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>

#include <memory>

namespace Platform::TextServices {
namespace {

using Order = std::unique_ptr<const icu::Collator>;

Order makeOrder() {
    UErrorCode status = U_ZERO_ERROR;
    const auto language = icu::Locale::forLanguageTag(preferredLanguages().front(), status);
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(language, status));
    if (U_FAILURE(status))
        return nullptr;
    collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    collator->setStrength(icu::Collator::IDENTICAL); // to the order of code points at last
    return collator;
}

/// Of the language in which the process began: to find the rules takes longer than to compare.
const Order& userOrder() {
    static const NeverDestroyed<Order> order(makeOrder());
    return order.get();
}

} // namespace

std::weak_ordering localizedStandardCompare(std::string_view first, std::string_view second) {
    if (!userOrder())
        return first <=> second;
    UErrorCode status = U_ZERO_ERROR;
    return static_cast<int>(userOrder()->compareUTF8(first, second, status)) <=> 0;
}

} // namespace Platform::TextServices
