// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What can be set: a row for each setting, from which its options, its keys in files, its checks,
 * its place in requests and records, and its value for people follow. */
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/codes.hpp"
#include "settings/configuration.hpp"

namespace bmc::settings {

/* In the order in which a change that has several is checked: a mode or a switchover counts for
 * what is set along with it. */
enum class Section { mode, switchover, hostName, lldp, lan, dns, an };

struct SectionInfo {
    Section section;
    const char *key;         /* in files, and the command's name */
    const char *title;       /* "LAN settings" */
    std::uint32_t module;    /* NW_OPER_LOG_MODULE_E */
    unsigned portCount;      /* ports that have such settings; 0: they are the machine's */
    bool isScalar;           /* has one setting, which in files stands without a key of its own */
    std::size_t requestSize; /* of one port, or of the machine */
    std::size_t entry;       /* offset in Configuration of port 0's entry, or the machine's */
    std::size_t stride;      /* to the next port's */
};

std::span<const SectionInfo> sections();
const SectionInfo &infoOf(Section section);
const SectionInfo *findSection(std::string_view key);

/* What a value is and how it is written. */
enum class Shape {
    flag,
    words,
    heldWords, /* one of words, stored without effect while the second part is not 0 */
    number,
    switchedNumber, /* a number or off: parts are a flag and the number */
    address,
    subnet, /* ADDR/LEN: parts are the address, and its mask or prefix length */
    route,  /* DEST/LEN,GATEWAY: parts are as for a subnet, and the gateway */
    name,   /* in a request, its length stands in the byte before it or it ends with a zero */
    domain,
    header, /* TTL,FLAGS,TOS */
};

struct Word {
    std::string_view text;
    std::uint32_t value;
    const char *lack = nullptr; /* what is missing of it yet: "is stored without effect" */
};

/* What the network modes are called; the bond's is a mode of the shared link, too. */
inline constexpr std::string_view separateMode = "separate";
inline constexpr std::string_view bondedMode = "active-standby";

/* Before a word that is held, in files and when it is shown. */
inline constexpr std::string_view heldPrefix = "resumed,";

struct Kind {
    Shape shape;
    const char *valueName = nullptr; /* on the command line: "ADDR|off"; null: the words */
    int family = 0;                  /* AF_INET or AF_INET6 of an address */
    std::span<const Word> words{};   /* also of a flag */
    unsigned least = 0;              /* of a number, and of words in a request */
    unsigned most = 0;               /* of a number */
    const char *unit = nullptr;      /* of a number or of words */
    const char *unset = nullptr;     /* text for no value at all, which is null in JSON */
    bool isCounted = false;          /* a name whose length stands in the byte before it */
};

/* A field of a request and of a record. A request's field that is longer than the record's is cut,
 * a shorter one filled with zeros: numbers are little-endian, texts end with a zero. */
struct Part {
    const char *name;
    unsigned word;     /* of the change bits */
    std::uint32_t bit; /* in that word */
    std::size_t request;
    std::size_t requestSize;
    std::size_t record; /* offset in the section's entry */
    std::size_t size;
    bool (*isValid)(const std::uint8_t *value); /* in a request; null: the kind's range holds */
    Result refusal;                             /* when it isn't */
};

/* What one setting consists of, in the order of its text. */
class Parts {
public:
    static constexpr std::size_t most = 3;

    constexpr Parts(std::initializer_list<Part> parts)
    {
        for (const Part &part : parts) {
            rows_.at(size_++) = part;
        }
    }

    constexpr const Part *begin() const
    {
        return rows_.data();
    }
    constexpr const Part *end() const
    {
        return rows_.data() + size_;
    }
    constexpr std::size_t size() const
    {
        return size_;
    }
    constexpr const Part &operator[](std::size_t index) const
    {
        return rows_.at(index);
    }

private:
    std::array<Part, most> rows_{};
    std::size_t size_ = 0;
};

/* Segment checks that a change calls for. */
struct Reach {
    std::uint32_t addresses = 0;        /* NW_SEGCHK_* */
    std::uint32_t ownRoutes = 0;        /* NW_ROUTESET_* of the port itself */
    std::uint32_t neighboursRoutes = 0; /* ... and of the port beside it */
};

/* An object in the answer of "show". Its first setting switches it: while it is off, nothing is
 * told of the others. */
struct ShowGroup {
    const char *key;
    const char *label;
};

/* Where "show" tells a value. Settings that have the same place form a list. */
struct Show {
    const char *label; /* of its line; null: in the line of its group */
    const char *key;   /* in JSON; null: told among what is known beside the settings */
    const ShowGroup *group = nullptr;
    const char *command = nullptr; /* that has it for its own; null: the section's */
};

struct Setting {
    Section section;
    const char *key; /* in files; with "--" in front the option of the section's command */
    Show show;
    const char *help; /* without range and unit, which are the kind's */
    const Kind *kind;
    Parts parts;
    Reach reach{};
    const char *switchKey = nullptr; /* setting that is meant where the value is "on" or "off" */
    bool isUsed = true;              /* or stored without effect */
};

/* All of them, section by section. */
std::span<const Setting> allSettings();
std::span<const Setting> settingsOf(Section section);
const Setting *findSetting(Section section, std::string_view key);

/* What it is for, with range, unit, and what of it is stored without effect. */
std::string helpOf(const Setting &setting);

/* "traffic-class of eth1, shared port is stored without effect"; empty where nothing is missing of
 * the value, as it is written. */
std::string effectNote(const Setting &setting, std::string_view value, std::string_view port);

/* The command that shows it, which sets it as well: "lan", "vlan". */
std::string_view commandOf(const Setting &setting);
/* What the command sets: its own, and that of the whole section where it has the section's name. */
std::vector<const Setting *> settingsOf(std::string_view command);

/* The value on a command line: "ADDR|off", "static|dhcp". */
std::string valueNameOf(const Setting &setting);
/* "off or on", "disabled, manual or auto" */
std::string listed(std::span<const Word> words);
/* Name of the value, empty without one; a word's value, null without one. */
std::string_view wordOf(std::span<const Word> words, std::uint32_t value);
const Word *findWord(std::span<const Word> words, std::string_view text);

/* A port's or the machine's entry of a section. The port is 0 where the settings are the machine's.
 */
const std::uint8_t *entryOf(const Configuration &configuration, Section section, unsigned port);
std::uint8_t *entryOf(Configuration &configuration, Section section, unsigned port);

} // namespace bmc::settings
