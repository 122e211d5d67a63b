// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How deep the stack gets below a function of the library, from the compiler's own reports: every
 * unit's frames and calls. Functions of libc and of the platform count nothing. */
#ifndef STACK_USE_HPP
#define STACK_USE_HPP

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace binary {

struct Function {
    std::string signature; /* as the compiler writes it, with its name */
    std::uint64_t frame;
    std::set<std::string> calls;    /* titles: symbols; behind its file for a private function */
    std::set<std::string> pointers; /* names of the function pointers that it calls through */
};

struct Depth {
    std::uint64_t bytes;
    std::vector<std::string> path; /* the functions of the deepest path, the outermost first */
};

class StackUse {
public:
    /* A file with the path of each object, whose report lies beside it as .ci; calls of the
     * functions named in apart count nothing. Throws where a frame's size is not fixed. */
    explicit StackUse(const std::string &listOfObjects, std::set<std::string> apart = {});

    /* Throws for a function without a report, for recursion, and where it is not known what a call
     * through a pointer can reach. */
    const Depth &below(const std::string &title)
    {
        return below(title, "");
    }

    const std::map<std::string, Function> &functions() const
    {
        return functions_;
    }

private:
    void readReport(const std::string &path);
    void readNode(const std::string &line);
    void readEdge(const std::string &line);
    const Depth &below(const std::string &title, const std::string &within);
    std::set<std::string> calleesOf(const Function &function, const std::string &within) const;

    std::map<std::string, Function> functions_;
    std::set<std::string> apart_;
    std::map<std::string, Depth> depths_;
    std::set<std::string> open_;
};

} // namespace binary

#endif
