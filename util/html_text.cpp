#include "util/html_text.h"

#include <algorithm>
#include <array>

#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::array<TextView, 21> kArranging = {"br", "p",  "div", "table", "tr",   "ul",     "ol",
                                                 "li", "dl", "hr",  "pre",   "h1",   "h2",     "h3",
                                                 "h4", "h5", "h6",  "html",  "body", "center", "blockquote"};
constexpr std::array<TextView, 16> kOther = {"b",   "i",     "u",   "a",   "em", "strong", "font", "span",
                                             "big", "small", "sub", "sup", "tt", "code",   "img",  "!--"};

bool IsLetterOrDigit(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

/// The name of the tag that begins with the "<" at `start`; empty when there is no tag.
Text TagAt(TextView text, std::size_t start) {
    if (text.find('>', start) == TextView::npos) return {};
    TextView rest = text.substr(start + 1);
    if (rest.starts_with("!--")) return "!--";
    if (rest.starts_with('/')) rest.remove_prefix(1);
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsLetterOrDigit);
    return LowerCase(Text(rest.begin(), end));
}

template <std::size_t N>
bool HasTagOf(const std::array<TextView, N>& names, TextView text) {
    for (std::size_t start = text.find('<'); start != TextView::npos; start = text.find('<', start + 1))
        if (std::find(names.begin(), names.end(), TagAt(text, start)) != names.end()) return true;
    return false;
}

bool IsEntityAt(TextView text, std::size_t start) {
    TextView rest = text.substr(start + 1);
    if (rest.starts_with('#')) rest.remove_prefix(1);
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsLetterOrDigit);
    return end != rest.begin() && end != rest.end() && *end == ';';
}

Text Escaped(TextView text) {
    Text escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '<')
            escaped += "&lt;";
        else if (text[i] == '&' && !IsEntityAt(text, i))
            escaped += "&amp;";
        else
            escaped += text[i];
    }
    return escaped;
}

Text WithLineBreaks(TextView text) {
    Text lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (isPair) continue;
        const bool isEnd = text[i] == '\r' || text[i] == '\n';
        isEnd ? lines += "<br>" : lines += text[i];
    }
    return lines;
}

}  // namespace

Text HtmlFromMessage(TextView message) {
    if (HasTagOf(kArranging, message)) return Text(message);
    return WithLineBreaks(HasTagOf(kOther, message) ? Text(message) : Escaped(message));
}

}  // namespace rvl
