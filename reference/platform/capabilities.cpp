// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Capabilities: {"<group>": {"<name>": <number or text>}} in one file. */
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "bmc_platform.h"
#include "common/state_directory.hpp"
#include "platform/failure.hpp"
#include "platform/json_file.hpp"

namespace {

using bmc::Failure;

std::filesystem::path capabilityFile()
{
    const char *file = bmc::environmentOr("BMC_CAPABILITY_FILE", nullptr);
    return file != nullptr ? file : bmc::stateDirectory() / "capabilities.json";
}

const nlohmann::json &member(const nlohmann::json &object, const char *name,
                             const std::string &path)
{
    if (!object.is_object()) {
        throw Failure(EBADMSG, "capability " + path + ": its group is not an object");
    }
    const auto found = object.find(name);
    if (found == object.end()) {
        throw Failure(ENOENT, "capability " + path + " is not set", bmc::Level::information);
    }
    return *found;
}

/* Reads one capability and hands it, with its name for messages, to the function that stores it. */
template <typename Store>
int readCapability(const char *group, const char *name, const void *output, Store &&store)
{
    return bmc::guarded([&] {
        bmc::require(group != nullptr && name != nullptr && output != nullptr,
                     "capability: null argument");

        const std::string path = std::string(group) + "/" + name;
        const nlohmann::json file = bmc::readJson(capabilityFile());
        store(member(member(file, group, path), name, path), "capability " + path);
    });
}

template <typename Integer>
int readInteger(const char *group, const char *name, Integer *output)
{
    return readCapability(group, name, output,
                          [&](const nlohmann::json &value, const std::string &path) {
                              *output = bmc::integerOf<Integer>(value, path);
                          });
}

} // namespace

int CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName, uint8_t *pucValue)
{
    return readInteger(pcGroup, pcName, pucValue);
}

int CAP_GetShortCapabilityWithName(const char *pcGroup, const char *pcName, uint16_t *pusValue)
{
    return readInteger(pcGroup, pcName, pusValue);
}

int CAP_GetCommonCapabilityWithName(const char *pcGroup, const char *pcName, uint32_t uiMaxLength,
                                    void *pValue)
{
    return readCapability(
        pcGroup, pcName, pValue, [&](const nlohmann::json &value, const std::string &path) {
            bmc::require(uiMaxLength != 0, "capability: no room for a text");
            if (!value.is_string()) {
                throw Failure(EBADMSG, path + " is not a text");
            }

            const auto &text = value.get_ref<const std::string &>();
            std::memcpy(pValue, text.c_str(), std::min<std::size_t>(uiMaxLength, text.size() + 1));
        });
}
