#include "platform/posix/link_bytes.h"
#include "platform/posix/link_format.h"
#include "platform/posix/link_location.h"

namespace rvl::platform {
namespace {

std::uint32_t ReadHeader(ByteReader& reader, ShellLink& link) {
    const std::uint32_t flags = reader.U32();
    reader.Raw(32);  // attributes, times and size of the target
    link.iconIndex = static_cast<std::int32_t>(reader.U32());
    link.showCommand = KnownShowCommand(reader.U32());
    reader.Raw(12);
    return flags;
}

/// The block's length is part of the block.
bool ReadLocation(ByteReader& reader, Text& target) {
    const std::string_view rest = reader.Rest();
    const std::uint32_t size = reader.U32();
    if (size < sizeof size) return false;
    reader.Raw(size - sizeof size);
    return !reader.Failed() && ReadLinkLocation(rest.substr(0, size), target);
}

std::size_t CharacterSize(std::uint32_t flags) {
    return (flags & kIsUnicode) != 0 ? 2 : 1;
}

Text ReadText(ByteReader& reader, std::uint32_t flags, std::uint32_t flag) {
    if ((flags & flag) == 0) return {};
    const std::size_t characters = reader.U16();
    if (CharacterSize(flags) == 2) return reader.Wide(characters);
    const std::string_view text = reader.Raw(characters);
    return Text(text.substr(0, text.find('\0')));
}

}  // namespace

int ParseLink(std::string_view bytes, ShellLink& link) {
    constexpr int kBadFormat = 11;
    ByteReader reader(bytes);
    if (reader.U32() != kLinkHeaderSize || reader.Raw(kLinkClass.size()) != kLinkClass) return kBadFormat;
    ShellLink read;
    const std::uint32_t flags = ReadHeader(reader, read);
    if ((flags & kHasItemList) != 0) reader.Raw(reader.U16());
    if ((flags & kHasLocation) != 0 && !ReadLocation(reader, read.target)) return kBadFormat;
    read.description = ReadText(reader, flags, kHasName);
    if ((flags & kHasRelativePath) != 0) reader.Raw(reader.U16() * CharacterSize(flags));
    read.workingDirectory = ReadText(reader, flags, kHasWorkingDirectory);
    read.arguments = ReadText(reader, flags, kHasArguments);
    read.iconLocation = ReadText(reader, flags, kHasIconLocation);
    if (reader.Failed()) return kBadFormat;
    link = std::move(read);
    return 0;
}

}  // namespace rvl::platform
