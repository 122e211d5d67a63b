// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Requests and records of the operation log's modules, and what a change of each must read like.
 *
 * Every byte that a sentence does not need is poisoned: a sentence that is right was read from the
 * right place. Requests, records and contexts are heap blocks of exactly their size. */
#ifndef OPERATE_LOG_FIXTURE_HPP
#define OPERATE_LOG_FIXTURE_HPP

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "expected_rows.hpp"
#include "fake_matchers.hpp"

namespace operatelog {

using fake::Bytes;

inline constexpr std::uint8_t poison = 0xA5;

/* Where a module's change bitmap and values lie. */
struct Layout {
    std::uint32_t module;
    std::size_t requestSize;
    std::size_t bitmapWidth;  /* bytes of one word, at request offset 4 */
    std::size_t bitmapStride; /* from port to port */
    std::size_t ports;
    std::size_t words;       /* per port */
    std::uint32_t recordKey; /* record read back; 0: values lie in the request */
    std::size_t recordSize;
    std::size_t valueBase; /* in the record or the request */
    std::size_t valueStride;
    std::vector<std::string> headings; /* by port */
};

const std::vector<Layout> &layouts();
const Layout &layoutOf(std::uint32_t module);

/* A value that a row prints, and the words that it prints it with. */
struct Sample {
    Bytes value;
    std::string words;
};
Sample sampleOf(const SuccessRow &row);
/* The row's text with its sample's words. */
std::string fieldOf(const SuccessRow &row);

/* One module's change: its request and, where there is one, the record to be read back. */
class Change {
public:
    explicit Change(std::uint32_t module);

    Change &setWord(std::size_t port, std::size_t word, std::uint32_t bits);
    /* Selects the row for the port and puts its sample where it belongs. */
    Change &add(const SuccessRow &row, std::size_t port = 0);
    /* Every row of the module and the word, for the port. */
    Change &addAll(std::size_t port, std::size_t word = 0);
    Change &setValue(std::size_t offset, const Bytes &value, std::size_t port = 0);

    /* The request; the record goes into the fake database. */
    const Bytes &install() const;
    const Bytes &request() const
    {
        return request_;
    }

private:
    std::size_t wordAt(std::size_t port, std::size_t word) const;

    const Layout *layout_;
    Bytes request_;
    Bytes record_;
};

/* Fields of all rows of the module, word 0 before word 1, that the mask selects. */
std::string fieldsOf(std::uint32_t module, std::uint32_t word0, std::uint32_t word1 = 0);
/* Heading, fields and full stop. */
std::string sentenceOf(std::uint32_t module, std::size_t port, const std::string &fields);

/* The text that a slot holds, bounded by it. */
template <std::size_t size>
std::string textOf(const char (&slot)[size])
{
    return std::string(slot, strnlen(slot, size));
}

class OperateLogTest : public fake::FakePlatformTest {
protected:
    OperateLogTest();

    /* Builds the text of a success into a context whose other slots are poisoned. */
    std::string build(std::uint32_t module, const Bytes &request, std::uint32_t port = 0);

    /* The line that closes every build. */
    static fake::LineMatcher operLogLine(const std::string &text);
    static fake::LineMatcher errorLine(const char *format);
    static fake::LineMatcher errorLine(const char *format, int value);

    /* Everything behind the main slot is as poison() left it, but for the level. */
    void expectOtherSlotsUntouched() const;
    void poisonOtherSlots();

    std::unique_ptr<NW_OPER_LOG_S> log = std::make_unique<NW_OPER_LOG_S>();
};

} // namespace operatelog

#endif
