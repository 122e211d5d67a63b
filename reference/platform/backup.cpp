// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/backup.hpp"

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

#include "common/files.hpp"
#include "platform/failure.hpp"

namespace bmc {

namespace {

constexpr std::string_view magic = "bmcrecs\n";
constexpr std::uint32_t version = 1;
constexpr std::size_t wordSize = sizeof(std::uint32_t);

/* What a byte does to a checksum, CRC-32. */
constexpr auto checksumRows = [] {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::array<std::uint32_t, 256> rows{};
    for (std::uint32_t byte = 0; byte < rows.size(); ++byte) {
        rows[byte] = byte;
        for (int bit = 0; bit < 8; ++bit) {
            rows[byte] = (rows[byte] >> 1) ^ ((rows[byte] & 1) != 0 ? polynomial : 0);
        }
    }
    return rows;
}();

std::uint32_t checksumOf(std::string_view bytes)
{
    std::uint32_t rest = ~0U;
    for (const char byte : bytes) {
        rest = (rest >> 8) ^ checksumRows[(rest ^ static_cast<std::uint8_t>(byte)) & 0xFF];
    }
    return ~rest;
}

void appendWord(std::string &bytes, std::uint32_t word)
{
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(word >> shift);
    }
}

/* Takes a file apart from its beginning. */
class Reader {
public:
    Reader(std::string_view rest, const std::filesystem::path &file) : rest_(rest), file_(file) {}

    std::string_view take(std::size_t size)
    {
        require(size <= rest_.size(), "is cut short");
        const std::string_view bytes = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return bytes;
    }

    std::uint32_t takeWord()
    {
        std::uint32_t word = 0;
        for (const char byte : take(wordSize)) {
            word = word << 8 | static_cast<std::uint8_t>(byte);
        }
        return word;
    }

    std::size_t left() const
    {
        return rest_.size();
    }

    void require(bool condition, const char *text) const
    {
        if (!condition) {
            throw Failure(EBADMSG, file_.string() + " " + text);
        }
    }

private:
    std::string_view rest_;
    const std::filesystem::path &file_;
};

/* Of the file, as far as the checksum. */
std::string bytesOf(const Records &records)
{
    std::string bytes(magic);
    appendWord(bytes, version);
    appendWord(bytes, static_cast<std::uint32_t>(records.size()));
    for (const auto &[key, content] : records) {
        appendWord(bytes, key);
        appendWord(bytes, static_cast<std::uint32_t>(content.size()));
        bytes.append(reinterpret_cast<const char *>(content.data()), content.size());
    }
    return bytes;
}

} // namespace

std::uint32_t checksumOf(const Records &records)
{
    return checksumOf(bytesOf(records));
}

void writeBackup(const std::filesystem::path &file, const Records &records)
{
    constexpr mode_t ownersAlone = 0600;
    std::string bytes = bytesOf(records);
    appendWord(bytes, checksumOf(bytes));
    replaceFile(file, bytes, ownersAlone);
}

Records readBackup(const std::filesystem::path &file)
{
    const std::string bytes = readFile(file, databaseSize);
    Reader reader(bytes, file);
    reader.require(reader.take(magic.size()) == magic, "is no copy of records");
    reader.require(reader.takeWord() == version, "has a format of another version");
    reader.require(reader.left() >= 2 * wordSize, "is cut short");
    const std::string_view checked(bytes.data(), bytes.size() - wordSize);
    Reader end(std::string_view(bytes).substr(checked.size()), file);
    reader.require(end.takeWord() == checksumOf(checked), "has a wrong checksum");

    Records records;
    for (std::uint32_t count = reader.takeWord(); count != 0; --count) {
        const std::uint32_t key = reader.takeWord();
        const std::string_view content = reader.take(reader.takeWord());
        const auto *first = reinterpret_cast<const std::byte *>(content.data());
        records[key].assign(first, first + content.size());
    }
    reader.require(reader.left() == wordSize, "has bytes that no record has");
    return records;
}

} // namespace bmc
