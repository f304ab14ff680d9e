#include "platform/name_lookup.h"

#include <gio/gio.h>

#include <cstring>
#include <utility>

#include "platform/posix/event_dispatch.h"

namespace rvl::platform {
namespace {

constexpr int kHostNotFound = 11001;
constexpr int kTryAgain = 11002;
constexpr int kNoRecovery = 11003;
constexpr int kNoAddress = 11004;

int LookupError(const GError& error) {
    if (g_error_matches(&error, G_RESOLVER_ERROR, G_RESOLVER_ERROR_NOT_FOUND)) return kHostNotFound;
    if (g_error_matches(&error, G_RESOLVER_ERROR, G_RESOLVER_ERROR_TEMPORARY_FAILURE)) return kTryAgain;
    return kNoRecovery;
}

std::uint32_t AddressOf(GInetAddress* address) {
    std::uint32_t value = 0;
    std::memcpy(&value, g_inet_address_to_bytes(address), sizeof value);
    return value;
}

/// An IPv6 address written as such comes back whatever was asked for.
GInetAddress* FirstIpv4(GList* addresses) {
    for (GList* row = addresses; row != nullptr; row = row->next)
        if (g_inet_address_get_family(G_INET_ADDRESS(row->data)) == G_SOCKET_FAMILY_IPV4)
            return G_INET_ADDRESS(row->data);
    return nullptr;
}

}  // namespace

struct NameLookup::Impl {
    Completion completion;
    Text host;
    std::uint32_t address = 0;
    GCancellable* cancellable = g_cancellable_new();
    GResolver* resolver = g_resolver_get_default();

    ~Impl() {
        g_object_unref(cancellable);
        g_object_unref(resolver);
    }

    void Complete(GError* error, int code = 0) {
        if (error != nullptr) code = LookupError(*error);
        g_clear_error(&error);
        if (const Completion run = std::exchange(completion, nullptr))
            DispatchEvent([&] { run(code, host, address); });
    }
};

namespace {

/// The pending GLib call keeps the lookup alive until its callback; a cancelled one has no completion left.
using Pending = std::shared_ptr<NameLookup::Impl>;

gpointer Keep(const Pending& impl) {
    return std::make_unique<Pending>(impl).release();
}

Pending Take(gpointer data) {
    return std::move(*std::unique_ptr<Pending>(static_cast<Pending*>(data)));
}

void ForwardFinished(GObject*, GAsyncResult* result, gpointer data) {
    const Pending impl = Take(data);
    GError* error = nullptr;
    GList* addresses = g_resolver_lookup_by_name_with_flags_finish(impl->resolver, result, &error);
    GInetAddress* first = FirstIpv4(addresses);
    if (first != nullptr) impl->address = AddressOf(first);
    g_resolver_free_addresses(addresses);
    impl->Complete(error, first != nullptr ? 0 : kNoAddress);
}

void ReverseFinished(GObject*, GAsyncResult* result, gpointer data) {
    const Pending impl = Take(data);
    GError* error = nullptr;
    char* name = g_resolver_lookup_by_address_finish(impl->resolver, result, &error);
    if (name != nullptr) impl->host = name;  // host names are ASCII
    g_free(name);
    impl->Complete(error);
}

}  // namespace

NameLookup::NameLookup(std::shared_ptr<Impl> impl) : m_impl(std::move(impl)) {}

NameLookup::~NameLookup() {
    m_impl->completion = nullptr;
    g_cancellable_cancel(m_impl->cancellable);
}

std::unique_ptr<NameLookup> NameLookup::Forward(const Text& host, Completion completion) {
    auto impl = std::make_shared<Impl>();
    impl->completion = std::move(completion);
    impl->host = host;
    g_resolver_lookup_by_name_with_flags_async(impl->resolver, Utf8FromText(host).c_str(),
                                               G_RESOLVER_NAME_LOOKUP_FLAGS_IPV4_ONLY, impl->cancellable,
                                               ForwardFinished, Keep(impl));
    return std::unique_ptr<NameLookup>(new NameLookup(std::move(impl)));
}

std::unique_ptr<NameLookup> NameLookup::Reverse(std::uint32_t address, Completion completion) {
    auto impl = std::make_shared<Impl>();
    impl->completion = std::move(completion);
    impl->address = address;
    GInetAddress* inet =
        g_inet_address_new_from_bytes(reinterpret_cast<const guint8*>(&address), G_SOCKET_FAMILY_IPV4);
    g_resolver_lookup_by_address_async(impl->resolver, inet, impl->cancellable, ReverseFinished, Keep(impl));
    g_object_unref(inet);
    return std::unique_ptr<NameLookup>(new NameLookup(std::move(impl)));
}

}  // namespace rvl::platform
