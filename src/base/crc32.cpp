#include "base/crc32.h"

#include <array>
#include <cstddef>

namespace kalmora {

namespace {

constexpr std::size_t kStep = 8;  // bytes taken at a time, with a table for each place among them
using Tables = std::array<std::array<std::uint32_t, 256>, kStep>;

constexpr Tables MakeTables() {
    constexpr std::uint32_t kPolynomial = 0xEDB88320u;
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) rest = (rest & 1) != 0 ? rest >> 1 ^ kPolynomial : rest >> 1;
        tables[0][byte] = rest;
    }
    for (std::size_t place = 1; place < kStep; ++place)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t nearer = tables[place - 1][byte];
            tables[place][byte] = nearer >> 8 ^ tables[0][nearer & 0xFF];
        }
    return tables;
}

constexpr Tables kTables = MakeTables();

}  // namespace

std::uint32_t Crc32(std::string_view bytes, std::uint32_t before) {
    std::uint32_t rest = ~before;
    const auto at = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    while (bytes.size() >= kStep) {
        const std::uint32_t head = rest ^ (at(0) | std::uint32_t{at(1)} << 8 | std::uint32_t{at(2)} << 16 |
                                           std::uint32_t{at(3)} << 24);
        rest = kTables[7][head & 0xFF] ^ kTables[6][head >> 8 & 0xFF] ^ kTables[5][head >> 16 & 0xFF] ^
               kTables[4][head >> 24] ^ kTables[3][at(4)] ^ kTables[2][at(5)] ^ kTables[1][at(6)] ^
               kTables[0][at(7)];
        bytes.remove_prefix(kStep);
    }
    for (const char c : bytes) rest = rest >> 8 ^ kTables[0][(rest ^ static_cast<std::uint8_t>(c)) & 0xFF];
    return ~rest;
}

}  // namespace kalmora
