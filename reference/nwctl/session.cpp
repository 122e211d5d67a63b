// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "session.hpp"

#include "results.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

constexpr int indentation = 2;

Json orNull(const std::string &text)
{
    return text.empty() ? Json() : Json(text);
}

Json errorJson(const Failure &failure)
{
    Json error = {{"status", static_cast<int>(failure.status)},
                  {"option", orNull(failure.optionName)},
                  {"value", failure.optionName.empty() ? Json() : Json(failure.optionValue)},
                  {"reason", failure.what()},
                  {"code", nullptr},
                  {"name", nullptr},
                  {"meaning", nullptr},
                  {"completion", nullptr},
                  {"sentence", orNull(failure.sentence)}};
    if (failure.result) {
        const ResultInfo info = describeResult(*failure.result);
        error["code"] = codeText(info.code);
        error["name"] = info.name;
        error["meaning"] = info.meaning;
        error["completion"] = completionText(info.code);
    }
    return {{"error", error}};
}

/* "nwctl: --ipv4 '10.0.0.256/8': reason" and the result code on a line of its own. */
std::string errorText(const Failure &failure)
{
    std::string text = "nwctl: ";
    if (!failure.optionName.empty()) {
        text += escaped(failure.optionName) + " '" + escaped(failure.optionValue) + "': ";
    }
    text += escaped(failure.what()) + "\n";

    if (failure.result) {
        const ResultInfo info = describeResult(*failure.result);
        text += "nwctl: result " + codeText(info.code) + " (" + std::string(info.name) +
                "): " + info.meaning + "; IPMI completion code " + completionText(info.code) + "\n";
    }
    return text;
}

} // namespace

void Session::print(const std::string &text)
{
    output << text;
}

void Session::print(const Json &document)
{
    output << document.dump(indentation, ' ', true, Json::error_handler_t::replace) << "\n";
}

void Session::answer(const Json &document, const std::string &text)
{
    if (jsonWanted) {
        print(document);
    } else {
        print(text);
    }
}

void Session::remark(const std::string &text)
{
    output.flush();
    errors << "nwctl: " << escaped(text) << "\n";
}

void Session::report(const Failure &failure)
{
    status = failure.status;
    if (jsonWanted) {
        print(errorJson(failure));
        return;
    }

    if (!failure.sentence.empty()) {
        print(escaped(failure.sentence) + "\n");
    }
    output.flush();
    errors << errorText(failure);
}

} // namespace nwctl
