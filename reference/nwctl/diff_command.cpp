// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "diff": what is stored beside what is there. */
#include <nlohmann/json.hpp>

#include "nwctl/command.hpp"
#include "nwctl/manager_client.hpp"
#include "rpc/manager1.hpp"

namespace nwctl {

namespace {

using Json = nlohmann::ordered_json;
namespace manager1 = bmc::rpc::manager1;

std::string textIn(const Json &difference, const char *key)
{
    const Json &value = difference.at(key);
    return value.is_string() ? value.get<std::string>() : "";
}

/* "eth1: address 192.0.2.1/24 is stored and not there" */
std::string lineOf(const Json &difference)
{
    const std::string interface = textIn(difference, manager1::interfaceKey);
    const std::string stored = textIn(difference, manager1::storedKey);
    const std::string live = textIn(difference, manager1::liveKey);
    const std::string place = interface.empty() ? "" : interface + ": ";
    if (live.empty()) {
        return place + stored + " is stored and not there";
    }
    if (!stored.empty()) {
        return place + stored + " is stored, " + live + " is there";
    }
    const bool isForeign = difference.at(manager1::foreignKey);
    return place + live + (isForeign ? " is there, somebody else's" : " is there and not stored");
}

Row rowOf(const Json &difference)
{
    return {.value = Value(difference), .text = lineOf(difference), .isFolded = true};
}

void showDifferences(const Arguments &, Session &session)
{
    List list;
    bool isDifferent = false;
    try {
        for (const Json &difference : Json::parse(differencesByManager())) {
            list.rows.push_back(rowOf(difference));
            isDifferent = isDifferent || !difference.at(manager1::foreignKey).get<bool>();
        }
    } catch (const Json::exception &) {
        throw Failure(Exit::transport, "", "", "the network manager did not answer properly",
                      NW_ERR_RPC_TRANSPORT);
    }
    Rows rows;
    if (!isDifferent) {
        rows.push_back(line("Kernel and system are as it is stored."));
    }
    rows.push_back({.key = "differences", .value = std::move(list)});
    session.answer(rows);
    session.status = isDifferent ? Exit::different : Exit::success;
}

} // namespace

void addDiffCommand(std::vector<Command> &commands)
{
    commands.push_back({"",
                        "diff",
                        "Show where kernel and system are not as it is stored",
                        "diff",
                        {},
                        showDifferences});
}

} // namespace nwctl
