#pragma once

#include <cstddef>
#include <string>
#include <utility>

namespace rvl::test {

/// A database of Access 2000 to 2003 whose catalog has one entry, that of the database itself, with the
/// property AccessVersion, a text of five characters.
inline std::string JetDatabase(const std::string& version) {
    constexpr std::size_t kPage = 4096, kVersion = 0x3fed;
    // Offsets and hexadecimal bytes; everything else is zero.
    constexpr std::pair<std::size_t, const char*> kContent[] = {
        // the mark of a Jet 4 file
        {0x0001, "0100005374616e64617264204a65742044420001"},
        // not encrypted, as the scrambled header says it
        {0x003e, "fb8abc4e"},
        // a page of rows: one row
        {0x1000, "0101"},
        {0x100c, "0100f70f"},
        // the table's pages: page 3
        {0x1ff8, "03000000010000000201"},
        // the catalog table: one row
        {0x2010, "01"},
        // five columns, two of them of variable length
        {0x202b, "020005"},
        // where its pages are told
        {0x2038, "0100000001000004"},
        {0x204e, "01"},
        // Id, Type, Flags, Name
        {0x2056,
         "040003000000000100000001000000000001000000000004000200040000000002000000020000000000010000000000060"
         "004000a000000000300000003"},
        // LvProp
        {0x20a1, "fe010b000000000400010004"},
        // the names of the columns
        {0x20bc,
         "040049006400080054007900700065000a0046006c0061006700730008004e0061006d0065000c004c007600500072006f0"
         "070"},
        // a page of rows of the table on page 2
        {0x3000, "0101000002"},
        {0x300c, "01008f0f"},
        // Id 0, type 2, MSysDb
        {0x3f8f, "0500000000000200000000004d005300790073004400620044000080"},
        // its property AccessVersion; the ends of the variable columns
        {0x3fb3,
         "4d5232002200000080001a00410063006300650073007300560065007200730069006f006e001e000000000006000000000"
         "01200010a00000a00300039002e0035003000680018000c0002001f"}};
    std::string database(4 * kPage, '\0');
    for (const auto& [start, bytes] : kContent)
        for (std::size_t index = 0; bytes[2 * index] != '\0'; ++index)
            database[start + index] =
                static_cast<char>(std::stoi(std::string(bytes + 2 * index, 2), nullptr, 16));
    for (std::size_t index = 0; index < version.size(); ++index)
        database[kVersion + 2 * index] = version[index];
    return database;
}

}  // namespace rvl::test
