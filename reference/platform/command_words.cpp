// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "command_words.hpp"

#include <cerrno>

#include "failure.hpp"

namespace bmc {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view refused = ";|&<>`$()\n";
constexpr std::string_view escapedInQuotes = "$`\"\\";

bool oneOf(std::string_view set, char character)
{
    return set.find(character) != std::string_view::npos;
}

class Splitter {
public:
    explicit Splitter(std::string_view command) : m_rest(command) {}

    std::vector<std::string> split()
    {
        while (!m_rest.empty()) {
            step(take());
        }
        endWord();
        return std::move(m_words);
    }

private:
    char take()
    {
        if (m_rest.empty()) {
            throw Failure(EINVAL, "command ends within a quotation");
        }
        const char character = m_rest.front();
        m_rest.remove_prefix(1);
        return character;
    }

    void step(char character)
    {
        if (oneOf(blanks, character)) {
            endWord();
        } else if (oneOf(refused, character)) {
            throw Failure(EINVAL, std::string("command refused: unquoted '") +
                                      (character == '\n' ? "\\n" : std::string(1, character)) +
                                      "'");
        } else {
            m_inWord = true;
            part(character);
        }
    }

    void part(char character)
    {
        switch (character) {
        case '\'':
            singleQuoted();
            break;
        case '"':
            doubleQuoted();
            break;
        case '\\':
            m_word += take();
            break;
        default:
            m_word += character;
        }
    }

    void singleQuoted()
    {
        for (char character = take(); character != '\''; character = take()) {
            m_word += character;
        }
    }

    void doubleQuoted()
    {
        for (char character = take(); character != '"'; character = take()) {
            if (character == '\\' && !m_rest.empty() && oneOf(escapedInQuotes, m_rest.front())) {
                character = take();
            }
            m_word += character;
        }
    }

    void endWord()
    {
        if (m_inWord) {
            m_words.push_back(std::move(m_word));
            m_word.clear();
            m_inWord = false;
        }
    }

    std::string_view m_rest;
    std::vector<std::string> m_words;
    std::string m_word;
    bool m_inWord = false; /* an empty quotation is a word as well */
};

} // namespace

std::vector<std::string> splitCommand(std::string_view command)
{
    return Splitter(command).split();
}

} // namespace bmc
