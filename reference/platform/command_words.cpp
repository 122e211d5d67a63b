// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/command_words.hpp"

#include <cerrno>

#include "platform/failure.hpp"

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
    explicit Splitter(std::string_view command) : rest_(command) {}

    std::vector<std::string> split()
    {
        while (!rest_.empty()) {
            step(take());
        }
        endWord();
        return std::move(words_);
    }

private:
    char take()
    {
        if (rest_.empty()) {
            throw Failure(EINVAL, "command ends within a quotation");
        }
        const char character = rest_.front();
        rest_.remove_prefix(1);
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
            inWord_ = true;
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
            word_ += take();
            break;
        default:
            word_ += character;
        }
    }

    void singleQuoted()
    {
        for (char character = take(); character != '\''; character = take()) {
            word_ += character;
        }
    }

    void doubleQuoted()
    {
        for (char character = take(); character != '"'; character = take()) {
            if (character == '\\' && !rest_.empty() && oneOf(escapedInQuotes, rest_.front())) {
                character = take();
            }
            word_ += character;
        }
    }

    void endWord()
    {
        if (inWord_) {
            words_.push_back(std::move(word_));
            word_.clear();
            inWord_ = false;
        }
    }

    std::string_view rest_;
    std::vector<std::string> words_;
    std::string word_;
    bool inWord_ = false; /* an empty quotation is a word as well */
};

} // namespace

std::vector<std::string> splitCommand(std::string_view command)
{
    return Splitter(command).split();
}

} // namespace bmc
