// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "text.hpp"
#include "verdict.hpp"

namespace nwctl {

namespace {

void check(const CheckKind &kind, const std::string &text, Session &session)
{
    const Verdict verdict = kind.check(text);

    session.answer(Json{{"kind", kind.name},
                        {"text", text},
                        {"valid", verdict.valid},
                        {"detail", verdict.detail}},
                   escaped(text) + ": " + (verdict.valid ? "valid, " : "not valid, ") +
                       escaped(verdict.detail) + "\n");
    session.status = verdict.valid ? Exit::success : Exit::refused;
}

} // namespace

void addCheckCommands(std::vector<Command> &commands)
{
    for (const CheckKind &kind : checkKinds()) {
        const auto declare = [&kind](CLI::App &app, Session &session) {
            const auto text = std::make_shared<std::string>();
            app.add_option("TEXT", *text, kind.description)->required()->type_name("");
            app.callback([&kind, text, &session] { check(kind, *text, session); });
        };
        commands.push_back({"check", kind.name,
                            std::string("Is the text ") + kind.description + "?",
                            std::string("check ") + kind.name + " " + kind.example, declare});
    }
}

} // namespace nwctl
