#include "platform/posix/errno_mapping.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace rvl::platform {
namespace {

struct Mapping {
    int errnoValue;
    int code;
};

constexpr Mapping kSocketErrors[] = {
    {EINTR, 10004},           {EBADF, 10009},           {EACCES, 10013},        {EPERM, 10013},
    {EFAULT, 10014},          {EINVAL, 10022},          {EMFILE, 10024},        {ENFILE, 10024},
    {EAGAIN, 10035},          {EINPROGRESS, 10036},     {EALREADY, 10037},      {ENOTSOCK, 10038},
    {EDESTADDRREQ, 10039},    {EMSGSIZE, 10040},        {EPROTOTYPE, 10041},    {ENOPROTOOPT, 10042},
    {EPROTONOSUPPORT, 10043}, {ESOCKTNOSUPPORT, 10044}, {EOPNOTSUPP, 10045},    {EPFNOSUPPORT, 10046},
    {EAFNOSUPPORT, 10047},    {EADDRINUSE, 10048},      {EADDRNOTAVAIL, 10049}, {ENETDOWN, 10050},
    {ENETUNREACH, 10051},     {ENETRESET, 10052},       {ECONNABORTED, 10053},  {ECONNRESET, 10054},
    {EPIPE, 10054},           {ENOBUFS, 10055},         {ENOMEM, 10055},        {EISCONN, 10056},
    {ENOTCONN, 10057},        {ESHUTDOWN, 10058},       {ETOOMANYREFS, 10059},  {ETIMEDOUT, 10060},
    {ECONNREFUSED, 10061},    {ELOOP, 10062},           {ENAMETOOLONG, 10063},  {EHOSTDOWN, 10064},
    {EHOSTUNREACH, 10065},    {ENOTEMPTY, 10066},       {EUSERS, 10068},        {EDQUOT, 10069},
    {ESTALE, 10070},          {EREMOTE, 10071},         {ENONET, 10050},        {ENODEV, 10050},
    {EPROTO, 10053},
};

constexpr Mapping kFileErrors[] = {
    {ENOENT, 2},   {ENOTDIR, 3},  {EMFILE, 4},      {ENFILE, 4},         {EACCES, 5},   {EPERM, 5},
    {EBADF, 6},    {ENOMEM, 8},   {EXDEV, 17},      {EROFS, 19},         {EIO, 1117},   {EBUSY, 32},
    {ETXTBSY, 32}, {EEXIST, 183}, {EINVAL, 87},     {EPIPE, 109},        {EISDIR, 5},   {ENOSPC, 112},
    {EDQUOT, 112}, {EFBIG, 112},  {ENOTEMPTY, 145}, {ENAMETOOLONG, 206}, {ELOOP, 1921}, {EOPNOTSUPP, 50},
};

template <std::size_t N>
int Find(const Mapping (&table)[N], int errnoValue, int fallback) {
    for (const Mapping& row : table)
        if (row.errnoValue == errnoValue) return row.code;
    return fallback;
}

}  // namespace

int SocketErrorFromErrno(int errnoValue) {
    constexpr int kOperationNotSupported = 10045;
    return errnoValue == 0 ? 0 : Find(kSocketErrors, errnoValue, kOperationNotSupported);
}

int Win32ErrorFromErrno(int errnoValue) {
    constexpr int kGeneralFailure = 31;
    return errnoValue == 0 ? 0 : Find(kFileErrors, errnoValue, kGeneralFailure);
}

int Win32LastError() {
    return Win32ErrorFromErrno(errno);
}

int Win32OpenError(const std::string& host) {
    constexpr int kFileNotFound = 2, kPathNotFound = 3;
    if (errno != ENOENT) return Win32LastError();
    const std::size_t slash = host.rfind('/');
    const bool folderExists = slash == 0 || access(host.substr(0, slash).c_str(), F_OK) == 0;
    return folderExists ? kFileNotFound : kPathNotFound;
}

}  // namespace rvl::platform
