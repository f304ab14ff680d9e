#include "util/digest.h"

#include "util/handle_error.h"

namespace rvl {
namespace {

// The same on every workstation and on the server.
constexpr TextView kLeadingSalt = "uTc8NqX2";
constexpr TextView kTrailingSalt = "Kw73PbeZ";

}  // namespace

void MessageDigest::Reset() {
    m_engine.Reset();
    m_hex.clear();
}

void MessageDigest::AddBytes(const void* data, std::size_t size) {
    m_engine.Add(data, size);
}

void MessageDigest::AddText(TextView text) {
    AddBytes(text.data(), text.size());
}

void MessageDigest::Finish() {
    constexpr TextView kDigits = "0123456789abcdef";
    m_hex.clear();
    for (const std::uint8_t byte : m_engine.Finish()) {
        m_hex += kDigits[byte >> 4];
        m_hex += kDigits[byte & 15];
    }
}

Text MD5SumAsHex(TextView text) try {
    MessageDigest digest;
    digest.AddText(text);
    digest.Finish();
    return digest.AsHex();
} catch (...) {
    HandleError("Util.MD5SumAsHex");
    return "";
}

Text GenerateRVLChecksum(TextView text) try {
    Text salted(kLeadingSalt);
    salted += text;
    salted += kTrailingSalt;
    const Text digest = MD5SumAsHex(salted);
    if (digest.empty()) return {};
    return digest.substr(0, 8) + digest.substr(digest.size() - 8);
} catch (...) {
    HandleError("Globals.GenerateRVLChecksum");
    return {};
}

}  // namespace rvl
