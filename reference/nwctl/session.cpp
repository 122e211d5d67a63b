// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/session.hpp"

#include <array>
#include <cstdio>

#include <unistd.h>

#include "common/text.hpp"
#include "settings/codes.hpp"

namespace nwctl {

namespace {

std::string hexNumber(const char *format, std::uint32_t number)
{
    std::array<char, sizeof("0x12345678")> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

/* What a user or a document gives may be of any length, a message shall be readable. */
std::string shortened(const std::string &text)
{
    constexpr std::size_t longest = 1024;
    return text.size() <= longest ? text : text.substr(0, longest) + "...";
}

/* The failure with texts that fit into a message. */
Failure shortened(const Failure &failure)
{
    Failure shorter(failure.status, shortened(failure.optionName), shortened(failure.optionValue),
                    shortened(std::string(failure.what())), failure.result);
    shorter.sentence = failure.sentence;
    return shorter;
}

Rows errorRows(const Failure &failure)
{
    Rows rows{hidden("status", static_cast<int>(failure.status)),
              hidden("option", textOrNull(failure.optionName)),
              hidden("value", failure.optionName.empty() ? Value() : Value(failure.optionValue)),
              hidden("reason", failure.what())};
    for (Row &row : codeRows(failure.result)) {
        rows.push_back(std::move(row));
    }
    rows.push_back(
        hidden("completion", failure.result ? Value(completionText(*failure.result)) : Value()));
    rows.push_back(hidden("sentence", textOrNull(failure.sentence)));
    return {hidden("error", Object{std::move(rows)})};
}

/* "nwctl: --ipv4 '10.0.0.256/8': reason" and the result code on a line of its own. */
std::string errorText(const Failure &failure)
{
    std::string text = "nwctl: ";
    if (!failure.optionName.empty()) {
        text += bmc::escaped(failure.optionName) + " '" + bmc::escaped(failure.optionValue) + "': ";
    }
    text += bmc::escaped(failure.what()) + "\n";
    if (failure.result) {
        text += "nwctl: result " + explained(*failure.result) + "; IPMI completion code " +
                completionText(*failure.result) + "\n";
    }
    return text;
}

} // namespace

void Session::answer(const Rows &rows)
{
    print(wantsJson_ ? documentOf(rows) : textOf(rows));
}

void Session::print(const std::string &text)
{
    out_ << text;
}

void Session::remark(const std::string &text)
{
    out_.flush();
    err_ << "nwctl: " << bmc::escaped(text) << "\n";
}

void Session::prompt(const std::string &text)
{
    out_.flush();
    err_ << text << std::flush;
}

bool Session::isInteractive() const
{
    return !wantsJson_ && isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0;
}

void Session::report(const Failure &told)
{
    const Failure failure = shortened(told);
    status = failure.status;
    if (wantsJson_) {
        answer(errorRows(failure));
        return;
    }

    if (!failure.sentence.empty()) {
        print(bmc::escaped(failure.sentence) + "\n");
    }
    out_.flush();
    err_ << errorText(failure);
}

std::string codeText(NW_RESULT code)
{
    return hexNumber("0x%08x", code);
}

std::string completionText(NW_RESULT code)
{
    return hexNumber("0x%02x", bmc::settings::describe(code).completion);
}

std::string explained(NW_RESULT code)
{
    const bmc::settings::Code described = bmc::settings::describe(code);
    return codeText(code) + " (" + std::string(described.name) +
           "): " + std::string(described.meaning);
}

Rows codeRows(std::optional<NW_RESULT> code)
{
    if (!code) {
        return {hidden("code", nullptr), hidden("name", nullptr), hidden("meaning", nullptr)};
    }
    const bmc::settings::Code described = bmc::settings::describe(*code);
    return {hidden("code", codeText(*code)), hidden("name", described.name),
            hidden("meaning", described.meaning)};
}

} // namespace nwctl
