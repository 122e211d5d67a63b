// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "stack_use.hpp"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "files.hpp"

namespace binary {
namespace {

/* What a call through a pointer of this name can reach: every function of the library with this
 * signature; below the function named in within, if any, no more than its row says. */
struct PointerKind {
    const char *pointer;
    const char *reached;
    const char *within = "";
};
const PointerKind pointerKinds[] = {
    /* of the operation log's tables; LAN slots are built of the LAN module alone */
    {"pfnParamFormat", R"(void \S+\(const uint8_t\*, uint32_t, char\*\))"},
    {"pfnBuild", R"(void NW_SuccessLANOperateLogBuild\(.*\))", "NW_BuildLanSlots"},
    {"pfnBuild", R"(void \S+\(uint32_t, uint32_t, const void\*, NW_OPER_LOG_S\*\))"},
    /* of the address checks' tables */
    {"pfnPredicate", R"(uint32_t NW_CheckIPv[46]Is\w+\(const uint8_t\*\))"},
    /* RPC channel of a setter */
    {"pfnChannel", R"(NW_RESULT \S+\(void\*, uint32_t\*, uint32_t\))"},
    /* steps of the shared-link change */
    {"pfnChange", R"(NW_RESULT \S+\(uint8_t, NW_OPER_LOG_S\*\))"},
    /* database accessor of a chassis record */
    {"pfnRead", R"(NW_RESULT NW_LMDB_Get_\w+\(\w+\*\))"},
};

constexpr const char *indirectCall = "__indirect_call";

/* The text in quotes behind this key, or nothing. */
std::string valueOf(const std::string &line, const std::string &key)
{
    const std::size_t start = line.find(" " + key + ": \"");
    if (start == std::string::npos) {
        return "";
    }
    const std::size_t text = line.find('"', start) + 1;
    return line.substr(text, line.find('"', text) - text);
}

std::vector<std::string> partsOf(const std::string &label)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = label.find("\\n", start)) != std::string::npos; start = end + 2) {
        parts.push_back(label.substr(start, end - start));
    }
    parts.push_back(label.substr(start));
    return parts;
}

/* The pointer's name, read in the source at "file:line:column". */
std::string pointerAt(const std::string &place)
{
    const std::size_t column = place.rfind(':');
    const std::size_t line = place.rfind(':', column - 1);
    if (column == std::string::npos || line == std::string::npos) {
        throw std::runtime_error("a call through a pointer without a place");
    }

    std::istringstream source(support::readFile(place.substr(0, line)));
    std::string text;
    for (unsigned long left = std::stoul(place.substr(line + 1)); left > 0; --left) {
        std::getline(source, text);
    }
    /* the compiler's column is that of the parenthesis behind the name */
    const std::size_t end = std::stoul(place.substr(column + 1)) - 1;
    const std::size_t name = text.find_last_not_of("abcdefghijklmnopqrstuvwxyz"
                                                   "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                                                   end - 1) +
                             1;
    if (text.compare(name, 3, "pfn") != 0) {
        throw std::runtime_error("no pointer's name at " + place);
    }
    return text.substr(name, end - name);
}

std::regex reachedThrough(const std::string &pointer, const std::string &within)
{
    for (const PointerKind &kind : pointerKinds) {
        const std::string narrowed = kind.within;
        if (pointer == kind.pointer && (narrowed.empty() || narrowed == within)) {
            return std::regex(kind.reached);
        }
    }
    throw std::runtime_error("what is reached through " + pointer + " is not known");
}

/* The function's own name if it narrows what is called below it, else what narrowed it. */
std::string narrowedBy(const Function &function, const std::string &within)
{
    for (const PointerKind &kind : pointerKinds) {
        const std::string narrowed = kind.within;
        if (!narrowed.empty() &&
            function.signature.find(" " + narrowed + "(") != std::string::npos) {
            return narrowed;
        }
    }
    return within;
}

} // namespace

StackUse::StackUse(const std::string &listOfObjects, std::set<std::string> apart)
    : apart_(std::move(apart))
{
    std::istringstream list(support::readFile(listOfObjects));
    for (std::string object; std::getline(list, object);) {
        readReport(object.substr(0, object.rfind('.')) + ".ci");
    }
    if (functions_.empty()) {
        throw std::runtime_error("no functions in " + listOfObjects);
    }
}

void StackUse::readReport(const std::string &path)
{
    std::ifstream report(path);
    if (!report) {
        throw std::runtime_error("no report " + path);
    }
    for (std::string line; std::getline(report, line);) {
        if (line.starts_with("node:")) {
            readNode(line);
        } else if (line.starts_with("edge:")) {
            readEdge(line);
        }
    }
}

/* Label: signature, place, "N bytes (static)", "N dynamic objects". "dynamic,bounded" is a frame
 * that pushes arguments of a known number. What a template was made with is left out of its
 * signature, and of a function that several units have the larger frame counts. */
void StackUse::readNode(const std::string &line)
{
    const std::vector<std::string> parts = partsOf(valueOf(line, "label"));
    if (parts.size() < 4) {
        return; /* not defined in this unit */
    }
    const std::string title = valueOf(line, "title");
    const bool isFixed = parts[2].ends_with("(static)") || parts[2].ends_with("(dynamic,bounded)");
    if (!isFixed || parts[3] != "0 dynamic objects") {
        throw std::runtime_error("the frame's size is not fixed: " + title);
    }
    Function &function = functions_[title];
    function.signature = parts[0].substr(0, parts[0].find(" [with "));
    function.frame = std::max<std::uint64_t>(function.frame, std::stoull(parts[2]));
}

void StackUse::readEdge(const std::string &line)
{
    Function &caller = functions_[valueOf(line, "sourcename")];
    const std::string callee = valueOf(line, "targetname");
    if (callee == indirectCall) {
        caller.pointers.insert(pointerAt(valueOf(line, "label")));
    } else {
        caller.calls.insert(callee);
    }
}

std::set<std::string> StackUse::calleesOf(const Function &function, const std::string &within) const
{
    std::set<std::string> callees = function.calls;
    for (const std::string &pointer : function.pointers) {
        const std::regex reached = reachedThrough(pointer, within);
        const std::size_t before = callees.size();
        for (const auto &[title, candidate] : functions_) {
            if (std::regex_match(candidate.signature, reached)) {
                callees.insert(title);
            }
        }
        if (callees.size() == before) {
            throw std::runtime_error("nothing is reached through " + pointer);
        }
    }
    return callees;
}

const Depth &StackUse::below(const std::string &title, const std::string &within)
{
    const Function &function = functions_.at(title);
    const std::string narrowed = narrowedBy(function, within);
    const std::string key = narrowed + " " + title;
    if (const auto known = depths_.find(key); known != depths_.end()) {
        return known->second;
    }
    if (!open_.insert(key).second) {
        throw std::runtime_error("recursion: " + title);
    }

    Depth deepest{};
    for (const std::string &callee : calleesOf(function, narrowed)) {
        if (!functions_.contains(callee) || apart_.contains(callee)) {
            continue; /* libc, the platform, or counted apart */
        }
        if (const Depth &depth = below(callee, narrowed); depth.bytes > deepest.bytes) {
            deepest = depth;
        }
    }
    deepest.bytes += function.frame;
    deepest.path.insert(deepest.path.begin(), title);

    open_.erase(key);
    return depths_[key] = deepest;
}

} // namespace binary
