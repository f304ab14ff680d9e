#include "platform/posix/x_property.h"

#include <X11/Xatom.h>
#include <glib.h>

#include <memory>
#include <string_view>

namespace rvl::platform {
namespace {

struct RawProperty {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    std::unique_ptr<unsigned char, XFreeDeleter> data;

    const char* Bytes() const { return reinterpret_cast<const char*>(data.get()); }
    /// Xlib hands out values of 32 bits as longs, whatever their size.
    const unsigned long* Values() const { return reinterpret_cast<const unsigned long*>(data.get()); }
};

RawProperty Read(Display* display, Window window, const char* name, Atom type) {
    constexpr long kLongest = 1 << 18;  // in units of four bytes
    RawProperty property;
    const Atom atom = XInternAtom(display, name, True);
    if (atom == None) return property;
    unsigned char* data = nullptr;
    unsigned long left = 0;
    const int answer = XGetWindowProperty(display, window, atom, 0, kLongest, False, type, &property.type,
                                          &property.format, &property.count, &left, &data);
    property.data.reset(data);
    return answer == Success ? std::move(property) : RawProperty{};
}

Text ReadableText(std::string_view utf8) {
    const std::unique_ptr<char, void (*)(gpointer)> text(
        g_convert_with_fallback(utf8.data(), static_cast<gssize>(utf8.size()), "ISO-8859-1", "UTF-8", "?",
                                nullptr, nullptr, nullptr),
        g_free);
    return text ? text.get() : "";
}

}  // namespace

std::optional<Text> TextProperty(Display* display, Window window, const char* name) {
    const RawProperty property = Read(display, window, name, AnyPropertyType);
    if (property.format != 8) return std::nullopt;
    if (property.type == XA_STRING) return Text(property.Bytes(), property.count);
    return ReadableText({property.Bytes(), property.count});
}

std::vector<unsigned long> ValuesProperty(Display* display, Window window, const char* name, Atom type) {
    const RawProperty property = Read(display, window, name, type);
    if (property.type != type || property.format != 32) return {};
    return {property.Values(), property.Values() + property.count};
}

unsigned long ValueProperty(Display* display, Window window, const char* name, Atom type) {
    const std::vector<unsigned long> values = ValuesProperty(display, window, name, type);
    return values.empty() ? 0 : values.front();
}

bool HasProperty(Display* display, Window window, const char* name) {
    return Read(display, window, name, AnyPropertyType).type != None;
}

}  // namespace rvl::platform
