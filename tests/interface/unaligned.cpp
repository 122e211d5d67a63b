// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "unaligned.hpp"

#include <memory>

#include "query_fixture.hpp"
#include "queue_calls.hpp"

namespace unaligned {

namespace {

constexpr std::size_t alignment = 16;
constexpr std::uint8_t surroundings = 0x5C;
constexpr std::size_t port = NW_PORT_ETH1; // the one that is configured

// A buffer between bytes that nobody may touch, in memory that ends at an inaccessible page.
class Placed {
public:
    Placed(const Bytes &content, std::size_t offset)
        : memory_(roundedUp(alignment + offset + content.size()), surroundings),
          place_(alignment + offset), size_(content.size())
    {
        std::ranges::copy(content, data());
    }

    std::uint8_t *data() const
    {
        return memory_.data() + place_;
    }
    Bytes content() const
    {
        return Bytes(data(), data() + size_);
    }
    bool surroundingsKept() const
    {
        const auto kept = [](std::uint8_t byte) { return byte == surroundings; };
        return std::ranges::all_of(memory_.bytes().first(place_), kept) &&
               std::ranges::all_of(memory_.bytes().subspan(place_ + size_), kept);
    }

private:
    static std::size_t roundedUp(std::size_t size)
    {
        return (size + alignment - 1) / alignment * alignment;
    }

    support::Guarded memory_;
    std::size_t place_;
    std::size_t size_;
};

query::Board board()
{
    query::Board board = query::distinctBoard(0, port);
    board.lan.port(port)[support::at::ipv4Type] = NW_ADDR_ORIGIN_DHCP;
    return board;
}

// The kernel knows one of the port's addresses.
void playKernel(const query::Board &board)
{
    query::LanRecord lan = board.lan;
    const std::uint8_t *address = &lan.port(port)[support::at::ipv6Addr];
    kernel::script() = kernel::Script{};
    kernel::script().datagram = datagram::build(
        {datagram::Message{
             .index = 11 + port,
             .attributes = {datagram::address(support::addressText(AF_INET6, address))}},
         datagram::Message{.type = datagram::done, .length = 20}});
}

void playPlatform(Manager manager)
{
    fake::Platform &platform = fake::platform();
    for (const auto &[key, size] : std::initializer_list<std::pair<std::uint32_t, std::size_t>>{
             {NW_KEY_HOSTNAME, sizeof(NW_HOSTNAME_DB_INFO_S)},
             {NW_KEY_DNS, sizeof(NW_DNS_DB_INFO_S)},
             {NW_KEY_LLDP, sizeof(NW_LLDP_DB_INFO_S)},
             {NW_KEY_NCSI, sizeof(NW_NCSI_DB_INFO_S)},
             {NW_KEY_AN_CFG, sizeof(NW_AN_CFG_DB_INFO_S)},
             {NW_KEY_OA_TEMPERATURE, sizeof(NW_OA_TEMPERA_INFO_S)},
             {NW_KEY_OCP_TEMPERATURE, sizeof(NW_ALL_OCP_TEMP_S)},
             {NW_KEY_FAN, sizeof(NW_ALL_FAN_INFO_S)}}) {
        platform.setRecord(key, setters::pattern(size, key));
    }
    platform.setRecord(NW_KEY_NET_STATUS, Bytes{0});
    Bytes network(sizeof(NW_OA_NETWORK_DB_INFO_S));
    network.front() = 1;
    platform.setRecord(NW_KEY_OA_NETWORK, network);
    platform.setCapability("SharePort", "ChannelIdOffset", 0x0203);
    platform.setCapability("NIC", "KezOemSupport", 1);
    for (std::uint32_t index = 0; index < NW_PORT_COUNT; ++index) {
        platform.setAnStatus(index, {1, 2, 3, 0});
    }
    const std::uint32_t result = manager == Manager::accepts ? 0 : NW_ERR_IPV4_SAME_SEGMENT;
    platform.answerRpc(fake::RpcAnswer::response(result, port, setters::pattern(NW_RPC_DATA_SIZE)));
}

std::string hex(const Bytes &bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += fake::formatted("%02x", byte);
    }
    return text;
}

// Addresses apart: handles and buffers may lie elsewhere.
std::string described(const fake::Call &call)
{
    return fake::formatted("%s key %x size %u service %u function %u timeout %u message %d ",
                           call.name.c_str(), call.key, call.size, call.service, call.function,
                           call.timeout, call.messagePresent) +
           call.text + " " + call.item + " " + hex(call.data);
}

std::string described(const fake::LogLine &line)
{
    return fake::formatted("%u/%u/%u %s:%u ", line.module, line.category, line.level,
                           line.file.c_str(), line.line) +
           line.text;
}

std::vector<std::string> callsMade()
{
    std::vector<std::string> made;
    for (const fake::Call &call : fake::platform().calls()) {
        made.push_back(described(call));
    }
    for (const fake::LogLine &line : fake::platform().lines()) {
        made.push_back(described(line));
    }
    made.insert(made.end(), kernel::script().calls.begin(), kernel::script().calls.end());
    made.push_back(hex(kernel::script().request));
    made.insert(made.end(), queue_calls::calls().begin(), queue_calls::calls().end());
    made.push_back(hex(queue_calls::message()));
    return made;
}

} // namespace

std::string gatewayText()
{
    query::LanRecord lan = board().lan;
    return support::addressText(AF_INET, &lan.port(port)[support::at::ipv4Gateway]);
}

Outcome run(const Row &row, Manager manager, std::size_t offset, std::size_t step)
{
    fake::platform().reset();
    board().install();
    playPlatform(manager);
    playKernel(board());
    queue_calls::play({});

    std::vector<std::unique_ptr<Placed>> buffers;
    Pointers pointers;
    for (const Bytes &content : row.buffers) {
        buffers.push_back(std::make_unique<Placed>(content, (offset + step * buffers.size()) % 8));
        pointers.push_back(buffers.back()->data());
    }

    Outcome outcome;
    outcome.result = row.call(pointers);
    for (const auto &buffer : buffers) {
        outcome.buffers.push_back(buffer->content());
        outcome.surroundingsKept = outcome.surroundingsKept && buffer->surroundingsKept();
    }
    outcome.calls = callsMade();
    return outcome;
}

} // namespace unaligned
