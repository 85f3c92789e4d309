#include "Platform/Application.h"
#include "Platform/TextServices.h"

#include <unicode/locid.h>

namespace Platform::Application {

LayoutDirection userInterfaceLayoutDirection() {
    static const LayoutDirection direction = [] {
        UErrorCode status = U_ZERO_ERROR;
        const auto language =
            icu::Locale::forLanguageTag(TextServices::preferredLanguages().front(), status);
        return U_SUCCESS(status) && language.isRightToLeft() ? LayoutDirection::rightToLeft
                                                             : LayoutDirection::leftToRight;
    }();
    return direction;
}

} // namespace Platform::Application
