#include "CorbelKitInterface/Linux/BounceStyle.h"

#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <sstream>
#include <string>

namespace CorbelKit {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds bounce{0.7};
constexpr Seconds lag{0.08}; // of a layer behind the one before it

// The path of a thrown ball, from 0 to 1 and back to 0, where `time` runs from 0 to 1.
constexpr double arc(double time) {
    return time < 0 || time > 1 ? 0 : 4 * time * (1 - time);
}

/// Pixels, `part` of the bounce gone: a hop, and a small one after it.
constexpr double rise(double part) {
    constexpr double hop = 0.65;
    return 7 * arc(part / hop) + 2 * arc((part - hop) / (1 - hop));
}

// One period. GTK eases over whole periods alone, so the curve goes in small straight steps.
std::string keyframes(Seconds period) {
    constexpr int steps = 20;
    std::ostringstream css;
    css.imbue(std::locale::classic());
    for (int step = 0; step <= steps; ++step) {
        const double part = static_cast<double>(step) / steps;
        css << 100 * part * (bounce / period) << "% { -gtk-icon-transform: translateY("
            << -rise(part) << "px); } ";
    }
    css << "100% { -gtk-icon-transform: translateY(0px); }";
    return css.str();
}

std::string styleSheet(std::size_t index, const EffectRepeat& repeat) {
    const Seconds period = bounce + repeat.pause;
    std::ostringstream css;
    css.imbue(std::locale::classic());
    css << "@keyframes corbel-bounce-up {" << keyframes(period)
        << "} .bounces { animation: " << period.count() << "s linear "
        << static_cast<double>(index) * lag.count() << "s ";
    css << (repeat.count == 0 ? "infinite" : std::to_string(repeat.count))
        << " corbel-bounce-up; }";
    return css.str();
}

} // namespace

bool EffectRepeat::isEndlessAvailable() {
    return true;
}

void addBounce(Gtk::Widget& layer, std::size_t index, const EffectRepeat& repeat) {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(styleSheet(index, repeat));
    layer.get_style_context()->add_provider(provider, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    layer.add_css_class("bounces");
}

} // namespace CorbelKit
