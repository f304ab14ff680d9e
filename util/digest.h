#pragma once

#include <cstddef>

#include "platform/message_digest.h"
#include "platform/text.h"

namespace rvl {

/// An MD5 digest taken in pieces: add, Finish, AsHex; Reset before the next one.
class MessageDigest {
 public:
    void Reset();
    void AddBytes(const void* data, std::size_t size);
    void AddText(TextView text);  ///< one byte per character
    void Finish();

    /// 32 hexadecimal digits, empty before Finish. Lower case, the form of the test suite of RFC 1321 and of
    /// the common tools: whoever compares digests as texts most likely has this one.
    Text AsHex() const { return m_hex; }

 private:
    platform::Md5 m_engine;
    Text m_hex;
};

/// A failure is reported and gives the empty text, which equals no digest.
Text MD5SumAsHex(TextView text);

/// The 16 characters that prove to the server, and local processes to the service, that a text comes from
/// one of us. Empty after a failure, which no proof equals.
Text GenerateRVLChecksum(TextView text);

}  // namespace rvl
