// DeHTML of text_functions.h.

#include <algorithm>
#include <utility>

#include "util/text_functions.h"

namespace rvl {
namespace {

bool IsWordCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
}

/// First word of what stands between "<" and ">", so that "br", "br clear=all" and "br/" are the same tag.
Text TagName(TextView tag) {
    const Text lower = LowerCase(TrimView(tag));
    const auto end = std::find_if_not(lower.begin(), lower.end(), IsWordCharacter);
    return Text(lower.begin(), end);
}

/// Position of the ">" that ends the tag opened at `start`; one inside double quotes does not.
std::size_t FindTagEnd(TextView html, std::size_t start) {
    bool inQuote = false;
    for (std::size_t i = start; i < html.size(); ++i) {
        if (html[i] == '"') inQuote = !inQuote;
        if (html[i] == '>' && !inQuote) return i;
    }
    return TextView::npos;
}

TextView TagText(const Text& name, bool atStart) {
    if (name == "br") return "\r\n";
    if (name == "p" && !atStart) return "\r\n\r\n";
    return "";
}

Text WithoutTags(TextView html) {
    Text plain;
    std::size_t position = 0;
    for (std::size_t open; (open = html.find('<', position)) != TextView::npos;) {
        const std::size_t close = FindTagEnd(html, open);
        if (close == TextView::npos) break;
        plain += html.substr(position, open - position);
        plain += TagText(TagName(html.substr(open + 1, close - open - 1)), plain.empty());
        position = close + 1;
    }
    plain += html.substr(position);
    return plain;
}

Text ReplaceAll(TextView text, TextView from, TextView to) {
    Text result;
    std::size_t position = 0;
    for (std::size_t found; (found = text.find(from, position)) != TextView::npos;) {
        result += text.substr(position, found - position);
        result += to;
        position = found + from.size();
    }
    result += text.substr(position);
    return result;
}

}  // namespace

Text DeHTML(TextView html) {
    Text line(html);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    Text plain = WithoutTags(line);
    // "&amp;" is last, so that "&amp;lt;" stays the text "&lt;".
    constexpr std::pair<TextView, TextView> kEntities[] = {
        {"&nbsp;", " "}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}};
    for (const auto& [entity, character] : kEntities)
        plain = ReplaceAll(plain, entity, character);
    return plain;
}

}  // namespace rvl
