#include "platform/message_digest.h"

#include <windows.h>

#include <bcrypt.h>

#include <algorithm>
#include <limits>

#include "platform/error.h"

namespace rvl::platform {
namespace {

void Require(NTSTATUS status) {
    if (!BCRYPT_SUCCESS(status))
        throw Error(kApplicationErrorBase + 2, "Md5", "The MD5 digest is not available");
}

BCRYPT_ALG_HANDLE OpenAlgorithm() {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    Require(BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_MD5_ALGORITHM, nullptr, 0));
    return algorithm;
}

/// Opening it loads libraries; it stays open until the process ends.
BCRYPT_ALG_HANDLE Algorithm() {
    static const BCRYPT_ALG_HANDLE algorithm = OpenAlgorithm();
    return algorithm;
}

struct DestroyHash {
    void operator()(void* hash) const { BCryptDestroyHash(hash); }
};

}  // namespace

struct Md5::Impl {
    std::unique_ptr<void, DestroyHash> hash;
};

Md5::Md5() : m_impl(std::make_unique<Impl>()) {
    Reset();
}

Md5::~Md5() = default;

void Md5::Reset() {
    BCRYPT_HASH_HANDLE hash = nullptr;
    Require(BCryptCreateHash(Algorithm(), &hash, nullptr, 0, nullptr, 0, 0));
    m_impl->hash.reset(hash);
}

void Md5::Add(const void* data, std::size_t size) {
    constexpr std::size_t kMostAtOnce = std::numeric_limits<ULONG>::max();
    auto* bytes = static_cast<UCHAR*>(const_cast<void*>(data));  // the call only reads them
    while (size > 0) {
        const std::size_t count = std::min(size, kMostAtOnce);
        Require(BCryptHashData(m_impl->hash.get(), bytes, static_cast<ULONG>(count), 0));
        bytes += count, size -= count;
    }
}

std::array<std::uint8_t, 16> Md5::Finish() {
    std::array<std::uint8_t, 16> digest{};
    Require(BCryptFinishHash(m_impl->hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0));
    return digest;
}

}  // namespace rvl::platform
