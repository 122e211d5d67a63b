// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "query_model.hpp"

#include <stdexcept>

namespace query {

namespace at = support::at;

namespace {

/* clang-format off */
const Field fields[] = {
    {"ucChannel", 1}, {"ucSameSegment", 1}, {"ucLanEnable", 1},
    {"szEthName", 16}, {"szMacAddr", 64}, {"aucMacAddr", 6},
    {"ucIpv4Enable", 1}, {"ucIpv4Type", 1},
    {"szIpv4Addr", 64}, {"szIpv4Mask", 64}, {"szIpv4Gateway", 64},
    {"aucIpv4Addr", 4}, {"aucIpv4Mask", 4}, {"aucIpv4Gateway", 4},
    {"szIpv4Addr2", 64}, {"aucIpv4Addr2", 4},
    {"ucIpv4Route1State", 1},
    {"aucIpv4Route1Addr", 4}, {"aucIpv4Route1Mask", 4}, {"aucIpv4Route1Gateway", 4},
    {"szIpv4Route1Addr", 64}, {"szIpv4Route1Mask", 64}, {"szIpv4Route1Gateway", 64},
    {"ucIpv4Route2State", 1},
    {"aucIpv4Route2Addr", 4}, {"aucIpv4Route2Mask", 4}, {"aucIpv4Route2Gateway", 4},
    {"szIpv4Route2Addr", 64}, {"szIpv4Route2Mask", 64}, {"szIpv4Route2Gateway", 64},
    {"ucIpv6Enable", 1}, {"ucIpv6Type", 1},
    {"aszIpv6Addr", 18 * 64}, {"szIpv6Gateway", 64},
    {"aaucIpv6Addr", 18 * 16}, {"aucIpv6Gateway", 16},
    {"aucIpv6PrefixLen", 17}, {"ucIpv6AddrCount", 1},
    {"szIpv6Gateway2", 64}, {"aucIpv6Gateway2", 16},
    {"astIpv6AddrState", 18 * 4},
    {"ucIpv6Route1State", 1}, {"aucIpv6Route1Addr", 16}, {"ucIpv6Route1Prefix", 1},
    {"aucIpv6Route1Gateway", 16}, {"szIpv6Route1Addr", 64}, {"szIpv6Route1Gateway", 64},
    {"ucIpv6Route2State", 1}, {"aucIpv6Route2Addr", 16}, {"ucIpv6Route2Prefix", 1},
    {"aucIpv6Route2Gateway", 16}, {"szIpv6Route2Addr", 64}, {"szIpv6Route2Gateway", 64},
    {"aucCfgTail", 7}, {"ucCfgByte40", 1}, {"ucCfgByte42", 1}, {"pad", 1},
};
/* clang-format on */

bool isZero(const std::uint8_t *bytes, std::size_t count)
{
    return std::all_of(bytes, bytes + count, [](auto byte) { return byte == 0; });
}

std::size_t widthOf(int family)
{
    return family == AF_INET ? 4 : 16;
}

// Fills one view from one entry.
class Filler {
public:
    Filler(View &view, support::PortEntry entry) : view_(view), entry_(entry) {}

    void lan(std::uint8_t channel)
    {
        view_.at("ucChannel") = channel;
        copy("ucLanEnable", at::lanEnable);
        const char *name = reinterpret_cast<const char *>(entry_.data());
        view_.raw("szEthName", 0, entry_.data(), strnlen(name, 16));
        if (entry_[at::lanEnable] == 1) {
            const std::uint8_t *mac = &entry_[at::mac];
            view_.raw("aucMacAddr", 0, mac, 6);
            view_.text("szMacAddr", 0,
                       fake::formatted("%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2],
                                       mac[3], mac[4], mac[5]));
        }
    }

    void ipv4()
    {
        copy("ucIpv4Enable", at::ipv4Enable);
        if (entry_[at::ipv4Enable] != 1) {
            return;
        }
        copy("ucIpv4Type", at::ipv4Type);
        rawAndTextIfSet(AF_INET, at::ipv4Addr, "aucIpv4Addr", "szIpv4Addr");
        rawAndTextIfSet(AF_INET, at::ipv4Mask, "aucIpv4Mask", "szIpv4Mask");
        rawAndTextIfSet(AF_INET, at::ipv4Gateway, "aucIpv4Gateway", "szIpv4Gateway");
        rawAndTextIfSet(AF_INET, at::ipv4Addr2, "aucIpv4Addr2", "szIpv4Addr2");
        for (std::size_t route = 0; route < 2; ++route) {
            const std::string name = "Ipv4Route" + std::to_string(route + 1);
            const std::size_t offset = at::ipv4Route[route];
            copy("uc" + name + "State", offset);
            if (entry_[offset] == 1) {
                rawAndText(AF_INET, offset + 1, "auc" + name + "Addr", "sz" + name + "Addr");
                rawAndText(AF_INET, offset + 5, "auc" + name + "Mask", "sz" + name + "Mask");
                rawAndText(AF_INET, offset + 9, "auc" + name + "Gateway", "sz" + name + "Gateway");
            }
        }
    }

    void ipv6()
    {
        copy("ucIpv6Enable", at::ipv6Enable);
        ipv6Slot(at::ipv6LinkLocal, 1);
        if (!isZero(&entry_[at::ipv6LinkLocal], 16)) {
            view_.state(0, 1);
        }
        if (entry_[at::ipv6Enable] != 1) {
            return;
        }
        copy("ucIpv6Type", at::ipv6Type);
        ipv6Slot(at::ipv6Addr, 0);
        if (!isZero(&entry_[at::ipv6Addr], 16)) {
            view_.state(1, 1);
        }
        copy("ucIpv6AddrCount", at::ipv6Count);
        copy("aucIpv6PrefixLen", at::ipv6Prefix);
        for (std::size_t i = 0; i < std::min<std::size_t>(entry_[at::ipv6Count], 16); ++i) {
            ipv6Slot(at::ipv6Further + 16 * i, 2 + i);
            view_.state(2 + i, 1);
            view_.at("aucIpv6PrefixLen", 1 + i) = entry_[at::ipv6FurtherPrefix + i];
        }
        rawAndTextIfSet(AF_INET6, at::ipv6Gateway, "aucIpv6Gateway", "szIpv6Gateway");
        rawAndTextIfSet(AF_INET6, at::ipv6Gateway2, "aucIpv6Gateway2", "szIpv6Gateway2");
        ipv6Routes();
    }

    void end()
    {
        view_.raw("aucCfgTail", 0, &entry_[at::tail], 7);
        copy("ucCfgByte40", at::byte40);
        copy("ucCfgByte42", at::byte42);
    }

private:
    void ipv6Routes()
    {
        for (std::size_t route = 0; route < 2; ++route) {
            const std::string name = "Ipv6Route" + std::to_string(route + 1);
            const std::size_t offset = at::ipv6Route[route];
            copy("uc" + name + "State", offset);
            copy("uc" + name + "Prefix", offset + 17);
            if (!isZero(&entry_[offset + 1], 16)) {
                rawAndText(AF_INET6, offset + 1, "auc" + name + "Addr", "sz" + name + "Addr");
            }
            if (!isZero(&entry_[offset + 18], 16)) {
                view_.raw("auc" + name + "Gateway", 0, &entry_[offset + 18], route == 0 ? 16 : 4);
                text(AF_INET6, offset + 18, "sz" + name + "Gateway", 0);
            }
        }
    }

    void ipv6Slot(std::size_t offset, std::size_t slot)
    {
        view_.raw("aaucIpv6Addr", 16 * slot, &entry_[offset], 16);
        if (!isZero(&entry_[offset], 16)) {
            text(AF_INET6, offset, "aszIpv6Addr", 64 * slot);
        }
    }
    void copy(const std::string &field, std::size_t offset)
    {
        view_.at(field) = entry_[offset];
    }
    void text(int family, std::size_t offset, const std::string &field, std::size_t within)
    {
        view_.text(field, within, support::addressText(family, &entry_[offset]));
    }
    void rawAndText(int family, std::size_t offset, const std::string &rawField,
                    const std::string &textField)
    {
        view_.raw(rawField, 0, &entry_[offset], widthOf(family));
        text(family, offset, textField, 0);
    }
    void rawAndTextIfSet(int family, std::size_t offset, const std::string &rawField,
                         const std::string &textField)
    {
        view_.raw(rawField, 0, &entry_[offset], widthOf(family));
        if (!isZero(&entry_[offset], widthOf(family))) {
            text(family, offset, textField, 0);
        }
    }

    View &view_;
    support::PortEntry entry_;
};

support::Wifi wifiSeen(const Board &board)
{
    return board.wirelessRead ? board.wifi : support::Wifi{};
}

support::SegmentVerdict segments(const Board &board, std::uint32_t checkType)
{
    LanRecord lan = board.lan;
    return support::sameSegment(board.ifc[0], 7, checkType, wifiSeen(board), lan);
}

} // namespace

std::size_t offsetOf(const std::string &name)
{
    std::size_t offset = 0;
    for (const Field &field : fields) {
        if (field.name == name) {
            return offset;
        }
        offset += field.width;
    }
    throw std::invalid_argument("no field " + name);
}

void Board::install() const
{
    fake::Platform &platform = fake::platform();
    platform.setRecord(0x10610007, ifc);
    platform.setRecord(0x10610003, lan.bytes());
    if (wirelessRead) {
        fake::Bytes record(1627);
        record[4] = wifi.enable;
        support::putText(record, 51, support::addressText(AF_INET, wifi.address.data()));
        platform.setWireless(record);
    } else {
        platform.failWireless(-3, 0x31);
    }
}

Board distinctBoard(std::uint8_t mode, std::size_t port)
{
    Board board{support::ifcRecord(mode), {}, true, {1, support::ipv4("10.77.88.99")}};
    for (std::size_t i = 0; i < support::kLanRecordSize; ++i) {
        board.lan.bytes()[i] = static_cast<std::uint8_t>(i * 31 + i / 251 * 7 + 3);
    }
    support::PortEntry entry = board.lan.port(port);
    support::putText(board.lan.bytes(), 4 + support::kPortEntrySize * port, "port-of-board");
    entry[13] = 0;
    for (const std::size_t flag :
         {at::lanEnable, at::ipv4Enable, at::ipv6Enable, at::ipv4Route[0], at::ipv4Route[1]}) {
        entry[flag] = 1;
    }
    entry[at::ipv6Count] = 5;
    return board;
}

void View::raw(const std::string &field, std::size_t within, const std::uint8_t *from,
               std::size_t count)
{
    std::copy_n(from, count, &at(field, within));
}

void View::text(const std::string &field, std::size_t within, const std::string &text)
{
    std::memcpy(&at(field, within), text.c_str(), text.size() + 1);
}

void View::state(std::size_t slot, std::uint8_t state)
{
    const std::uint8_t bytes[] = {state, 0, 0, 0};
    raw("astIpv6AddrState", 4 * slot, bytes, sizeof(bytes));
}

View expectedView(const Board &board, std::size_t port, const Bytes &before)
{
    View view(before);
    LanRecord lan = board.lan;
    Filler filler(view, lan.port(port));
    filler.lan(board.ifc[32 + port]);
    filler.ipv4();
    filler.ipv6();
    filler.end();
    view.at("ucSameSegment") = static_cast<std::uint8_t>((segments(board, 1).result != 0 ? 1 : 0) |
                                                         (segments(board, 6).result != 0 ? 2 : 0));
    return view;
}

Lines expectedEndLines(const Board &board)
{
    Lines lines;
    if (!board.wirelessRead) {
        lines.push_back(support::debugLine("Get Wifi config info from LMDB failed."));
    }
    return support::operator+(lines, support::debugLines(support::operator+(
                                         segments(board, 1).lines, segments(board, 6).lines)));
}

std::string difference(const Bytes &actual, const Bytes &expected)
{
    if (actual.size() != viewSize || expected.size() != viewSize) {
        return "a view of another size";
    }
    std::string names;
    std::size_t offset = 0;
    for (const Field &field : fields) {
        for (std::size_t i = offset; i < offset + field.width; ++i) {
            if (actual[i] != expected[i]) {
                names += fake::formatted("%s+%zu: %02x, expected %02x\n", field.name, i - offset,
                                         actual[i], expected[i]);
                break;
            }
        }
        offset += field.width;
    }
    return names;
}

} // namespace query
