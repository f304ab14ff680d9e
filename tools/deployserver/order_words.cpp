#include "tools/deployserver/order_words.h"

#include "platform/error.h"
#include "tools/deployserver/option_rule.h"
#include "util/command_words.h"

namespace rvl::deployserver {
namespace {

constexpr int kMostWords = 64;  // far more than any order has

Text TextOf(const std::string& utf8) try { return TextFromUtf8(utf8); } catch (const Error&) {
    RefuseUsage("an order holds characters beyond ISO 8859-1");
}

}  // namespace

std::vector<Text> OrderWords(const std::string& utf8) {
    const Text line = TextOf(utf8);
    std::vector<Text> words;
    for (int index = 0; index < kMostWords; ++index)
        if (Text word = GetParam(line, index); !word.empty()) words.push_back(std::move(word));
    return words;
}

}  // namespace rvl::deployserver
