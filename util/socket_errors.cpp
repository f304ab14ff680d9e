#include "util/socket_errors.h"

#include <algorithm>
#include <iterator>

namespace rvl {
namespace {

struct Row {
    std::int32_t number;
    TextView text;
};

constexpr Row kRows[] = {
    {10004, "Interrupted system call"},
    {10009, "Bad file number"},
    {10013, "Permission denied"},
    {10014, "Bad address"},
    {10022, "Invalid argument"},
    {10024, "Too many open files"},
    {10035, "Operation would block"},
    {10036, "Operation now in progress"},
    {10037, "Operation already in progress"},
    {10038, "Socket operation on non-socket"},
    {10039, "Destination address required"},
    {10040, "Message too long"},
    {10041, "Protocol wrong type for socket"},
    {10042, "Bad protocol option"},
    {10043, "Protocol not supported"},
    {10044, "Socket type not supported"},
    {10045, "Operation not supported on socket"},
    {10046, "Protocol family not supported"},
    {10047, "Address family not supported by protocol family"},
    {10048, "Address already in use"},
    {10049, "Can't assign requested address"},
    {10050, "Network is down"},
    {10051, "Network is unreachable"},
    {10052, "Network dropped connection on reset"},
    {10053, "Software caused connection abort"},
    {10054, "Connection reset by peer"},
    {10055, "No buffer space available"},
    {10056, "Socket is already connected"},
    {10057, "Socket is not connected"},
    {10058, "Can't send after socket shutdown"},
    {10059, "Too many references: can't splice"},
    {10060, "Connection timed out"},
    {10061, "Connection refused"},
    {10062, "Too many levels of symbolic links"},
    {10063, "File name too long"},
    {10064, "Host is down"},
    {10065, "No Route to Host"},
    {10066, "Directory not empty"},
    {10067, "Too many processes"},
    {10068, "Too many users"},
    {10069, "Disk quota exceeded"},
    {10070, "Stale NFS file handle"},
    {10071, "Too many levels of remote in path"},
    {10091, "Network subsystem is unavailable"},
    {10092, "WINSOCK DLL version out of range"},
    {10093, "Successful WSASTARTUP not yet performed"},
    {10101, "Graceful shutdown in progress"},
    {10102, "No more results"},
    {10103, "Call has been canceled"},
    {10104, "Procedure call table is invalid"},
    {10105, "Service provider is invalid"},
    {10106, "Service provider failed to initialize"},
    {10107, "System call failure"},
    {10108, "Service not found"},
    {10110, "No more results"},
    {10111, "Call was canceled"},
    {10112, "Database query was refused"},
    {11001, "Host not found"},
    {11002, "Non-authoritative host not found"},
    {11003, "Non-recoverable error"},
    {11004, "Valid name, no data record of requested type"},
    {11005, "At least one QoS reserve has arrived"},
    {11006, "At least one QoS send path has arrived"},
    {11007, "There are no QoS senders"},
    {11009, "The QoS reserve request has been confirmed"},
    {11010, "QoS admission error"},
    {11011, "QoS policy failure"},
    {11012, "QoS bad style"},
    {11013, "QoS bad object"},
    {11014, "QoS traffic control error"},
    {11015, "QoS generic error"},
    {11016, "QoS service type error"},
    {11017, "QoS flowspec error"},
    {11018, "Invalid QoS provider buffer"},
    {11020, "Invalid QoS filter type"},
    {11021, "Incorrect QoS filter count"},
    {11022, "Invalid QoS object length"},
    {11023, "Incorrect QoS flow count"},
    {11024, "Unrecognized QoS object"},
    {11025, "Invalid QoS policy object"},
    {11026, "Invalid QoS flow descriptor"},
    {11027, "Invalid QoS provider-specific flowspec"},
    {11028, "Invalid QoS provider-specific filterspec"},
    {11029, "Invalid QoS shape discard mode object"},
    {11031, "Reserved policy QoS element type"},
};

bool Precedes(const Row& a, const Row& b) {
    return a.number < b.number;
}

}  // namespace

TextView SocketErrorText(std::int32_t number) {
    const Row* row = std::lower_bound(std::begin(kRows), std::end(kRows), Row{number, {}}, Precedes);
    return row != std::end(kRows) && row->number == number ? row->text : TextView();
}

}  // namespace rvl
