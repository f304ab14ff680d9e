#include "platform/message_digest.h"

#include <openssl/evp.h>

#include "platform/error.h"

namespace rvl::platform {
namespace {

void Require(bool done) {
    if (!done) throw Error(kApplicationErrorBase + 2, "Md5", "The MD5 digest is not available");
}

}  // namespace

struct Md5::Impl {
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
};

Md5::Md5() : m_impl(std::make_unique<Impl>()) {
    Require(m_impl->context != nullptr);
    Reset();
}

Md5::~Md5() = default;

void Md5::Reset() {
    Require(EVP_DigestInit_ex(m_impl->context.get(), EVP_md5(), nullptr) == 1);
}

void Md5::Add(const void* data, std::size_t size) {
    Require(EVP_DigestUpdate(m_impl->context.get(), data, size) == 1);
}

std::array<std::uint8_t, 16> Md5::Finish() {
    std::array<std::uint8_t, 16> digest{};
    unsigned size = 0;
    Require(EVP_DigestFinal_ex(m_impl->context.get(), digest.data(), &size) == 1);
    return digest;
}

}  // namespace rvl::platform
