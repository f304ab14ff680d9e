#include "platform/posix/link_location.h"

#include "platform/posix/link_bytes.h"

namespace rvl::platform {
namespace {

constexpr std::uint32_t kHasLocalPath = 1;
constexpr std::uint32_t kHasNetworkPath = 2;
constexpr std::uint32_t kHeaderSize = 0x24;  ///< the form with offsets of UTF-16 texts

/// A fixed disk without serial number and label.
std::string VolumeId() {
    constexpr std::uint32_t kSize = 17, kFixedDrive = 3, kLabelOffset = 16;
    ByteWriter volume;
    for (const std::uint32_t field : {kSize, kFixedDrive, 0U, kLabelOffset})
        volume.U32(field);
    volume.U8(0);
    return volume.Bytes();
}

struct Header {
    std::uint32_t size, headerSize, flags, volume, localPath, network, suffix;
    std::uint32_t wideLocalPath = 0;
    std::uint32_t wideSuffix = 0;
};

Header ReadHeader(ByteReader& reader) {
    Header header{reader.U32(), reader.U32(), reader.U32(), reader.U32(),
                  reader.U32(), reader.U32(), reader.U32()};
    if (header.headerSize < kHeaderSize) return header;
    header.wideLocalPath = reader.U32();
    header.wideSuffix = reader.U32();
    return header;
}

Text TextAt(ByteReader& reader, std::uint32_t narrow, std::uint32_t wide) {
    return wide != 0 ? reader.WideAt(wide) : reader.NarrowAt(narrow);
}

/// The share, "\\server\folder\", of the network block at `offset`.
bool ReadShare(std::string_view block, std::uint32_t offset, Text& share) {
    constexpr std::uint32_t kPlainHeaderSize = 0x14;
    if (offset > block.size()) return false;
    ByteReader reader(block.substr(offset));
    reader.Raw(8);  // size and flags
    const std::uint32_t narrow = reader.U32();
    reader.Raw(8);  // device and kind of network
    share = TextAt(reader, narrow, narrow > kPlainHeaderSize ? reader.U32() : 0) + "\\";
    return !reader.Failed();
}

}  // namespace

std::string LinkLocation(const Text& path) {
    ByteWriter content;  // behind the header, whose fields are offsets into the block
    content.Raw(VolumeId());
    const std::uint32_t localPath = kHeaderSize + content.Size();
    content.Raw(path);
    const std::uint32_t suffix = kHeaderSize + content.Size();  // empty: it is the path's own NUL
    content.U8(0);
    content.PadToEven();
    const std::uint32_t wideLocalPath = kHeaderSize + content.Size();
    content.Wide(path);
    const std::uint32_t wideSuffix = kHeaderSize + content.Size();
    content.U16(0);

    ByteWriter block;
    constexpr std::uint32_t kNone = 0;
    for (const std::uint32_t field : {kHeaderSize + content.Size(), kHeaderSize, kHasLocalPath, kHeaderSize,
                                      localPath, kNone, suffix, wideLocalPath, wideSuffix})
        block.U32(field);
    block.Raw(content.Bytes());
    return block.Bytes();
}

bool ReadLinkLocation(std::string_view block, Text& path) {
    ByteReader reader(block);
    const Header header = ReadHeader(reader);
    if (reader.Failed()) return false;
    Text start;
    if ((header.flags & kHasNetworkPath) != 0) {
        if (!ReadShare(block, header.network, start)) return false;
    } else if ((header.flags & kHasLocalPath) != 0) {
        start = TextAt(reader, header.localPath, header.wideLocalPath);
    }
    path = start + TextAt(reader, header.suffix, header.wideSuffix);
    return !reader.Failed();
}

}  // namespace rvl::platform
