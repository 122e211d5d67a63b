// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Writes the lists that documents have of settings and codes:
 *   settings_tables codes | library codes | options COMMAND | manual COMMAND | bytes COMMAND */
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string>

#include "settings/detail/tables.hpp"

namespace bmc::settings {

namespace {

/* The text with each occurrence of a character replaced. */
std::string replaced(const std::string &text, char character, const std::string &by)
{
    std::string result;
    for (const char each : text) {
        result += each == character ? by : std::string(1, each);
    }
    return result;
}

void printOption(const Setting &setting)
{
    const std::string value = replaced(valueNameOf(setting), '|', "\\|");
    const char *hyphens = infoOf(setting.section).isScalar ? "" : "--";
    std::printf("| `%s%s` | `%s` | %s |\n", hyphens, setting.key, value.c_str(),
                helpOf(setting).c_str());
}

/* A word of a value as the manual page sets it: what is typed as it is, or what stands for more. */
std::string manualWord(const std::string &word)
{
    const bool isPlaceholder = std::ranges::any_of(
        word, [](char character) { return character >= 'A' && character <= 'Z'; });
    if (!isPlaceholder) {
        return "Cm " + word;
    }
    std::string lower = word;
    std::ranges::transform(lower, lower.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return "Ar " + replaced(replaced(lower, '/', " Ns / Ns Ar "), ',', " , Ns Ar ");
}

void printManual(const Setting &setting)
{
    std::string words;
    std::string rest = valueNameOf(setting);
    for (auto bar = rest.find('|'); !rest.empty(); bar = rest.find('|')) {
        words += (words.empty() ? "" : " | ") + manualWord(rest.substr(0, bar));
        rest = bar == rest.npos ? "" : rest.substr(bar + 1);
    }
    std::string help = helpOf(setting);
    help[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(help[0])));
    const std::string option =
        infoOf(setting.section).isScalar ? "" : "Fl -" + std::string(setting.key) + " ";
    std::printf(".It %s%s\n%s.\n", option.c_str(), words.c_str(), help.c_str());
}

int printSettings(const char *command, void (*print)(const Setting &setting))
{
    const auto settings = settingsOf(command);
    if (settings.empty()) {
        std::fprintf(stderr, "settings_tables: no command %s\n", command);
        return 2;
    }
    for (const Setting *setting : settings) {
        print(*setting);
    }
    return 0;
}

} // namespace

} // namespace bmc::settings

int main(int count, char **words)
{
    using namespace bmc::settings;
    const std::string what = count > 1 ? words[1] : "";
    if (what == "codes" && count == 2) {
        printCodes();
        return 0;
    }
    if (what == "options" && count == 3) {
        std::puts("| Option | Value | Changes |\n|---|---|---|");
        return printSettings(words[2], printOption);
    }
    if (what == "manual" && count == 3) {
        return printSettings(words[2], printManual);
    }
    if (what == "library" && count == 3 && std::string(words[2]) == "codes") {
        printCodesOfLibrary();
        return 0;
    }
    if (what == "bytes" && count == 3) {
        printBytesHead();
        return printSettings(words[2], printBytes);
    }
    std::fputs("usage: settings_tables codes | library codes | options COMMAND | manual COMMAND |\n"
               "       bytes COMMAND\n",
               stderr);
    return 2;
}
