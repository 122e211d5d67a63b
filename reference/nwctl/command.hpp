// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The commands as rows: what each is called, what it takes and what it does. */
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "nwctl/session.hpp"

namespace nwctl {

/* An option or argument as the user gave it. */
struct GivenOption {
    std::string name;
    std::string value;
};
using Given = std::vector<GivenOption>;

/* What a command takes. */
struct Parameter {
    enum class Kind {
        required, /* arguments by their place: one, */
        optional, /* at most one, */
        several,  /* one to most */
        option,   /* "--name VALUE", at most once */
        repeated, /* the same, any number of times */
        flag,
    };
    Kind kind;
    std::string name;
    std::string help;
    std::string valueName{}; /* of an option */
    int most = 1;
};

Parameter flag(std::string name, std::string help);

/* What a command was given, in the order of its parameters. */
class Arguments {
public:
    explicit Arguments(Given given) : given_(std::move(given)) {}

    bool has(std::string_view name) const;
    std::string value(std::string_view name, std::string_view otherwise = "") const;
    std::vector<std::string> values(std::string_view name) const;
    Given given(std::string_view name) const;

private:
    Given given_; /* a flag with an empty value */
};

/* Commands of one group stand beneath the group's name. */
struct Group {
    const char *name;
    const char *description;
};

struct Command {
    std::string group; /* empty: the command stands by itself */
    std::string name;
    std::string description;
    std::string example; /* a command line without the program's name */
    std::vector<Parameter> parameters;
    std::function<void(const Arguments &arguments, Session &session)> run;
};

std::span<const Group> groups();
std::vector<Command> commands();

/* The commands of one subject each. */
void addStatusCommands(std::vector<Command> &commands);
void addShowCommands(std::vector<Command> &commands);
void addSetCommands(std::vector<Command> &commands);
void addRequestCommands(std::vector<Command> &commands);
void addApplyCommands(std::vector<Command> &commands);
void addCheckpointCommands(std::vector<Command> &commands);
void addDiffCommand(std::vector<Command> &commands);
void addCheckCommands(std::vector<Command> &commands);
void addDiscoveryCommands(std::vector<Command> &commands);
void addChassisCommands(std::vector<Command> &commands);
void addQueueCommands(std::vector<Command> &commands);
void addHeartbeatCommands(std::vector<Command> &commands);

/* The argument PORT. */
Parameter portParameter(Parameter::Kind kind = Parameter::Kind::required,
                        const std::string &remark = "");

/* Decimal number of min to max; name is the option's or argument's. Throws Failure (usage). */
unsigned numberIn(const std::string &name, const std::string &text, unsigned min, unsigned max);

/* Pairs of hexadecimal digits. Throws Failure (usage). */
std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text);
/* The same, exactly size bytes. */
std::vector<std::uint8_t> bytesIn(const std::string &name, const std::string &text,
                                  std::size_t size);

/* The option --timeout of a command that blocks, and its value in seconds; 0 waits. */
Parameter limitParameter();
unsigned limitIn(const Arguments &arguments);

} // namespace nwctl
