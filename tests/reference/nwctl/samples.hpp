// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records and runs that several tests begin with. */
#pragma once

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "fake_matchers.hpp"
#include "network_mng/lan.h"
#include "network_mng/rpc.h"
#include "nwctl/manager_client.hpp"
#include "nwctl/run.hpp"
#include "nwctl/surroundings.hpp"

namespace samples {

/* eth0, eth1 and bond0 in separate mode; kernel indices that no interface has. */
NW_IFC_STATE_DB_INFO_S interfaces();
/* eth0 192.168.10.2/24 and eth1 192.168.20.2/24 with 2001:db8:20::2/64; bond0 off. */
NW_LAN_CFG_DB_INFO_S lanRecord();

/* Manual "bmc-1", BMC name "rack-7". */
NW_HOSTNAME_DB_INFO_S hostNameRecord();
/* eth0 automatic; eth1 manual with two IPv4 servers, a domain and no IPv6. */
NW_DNS_DB_INFO_S dnsRecord();

void storeIpv4(std::uint8_t (&field)[NW_IPV4_SIZE], const char *text);
void storeIpv6(std::uint8_t (&field)[NW_IPV6_SIZE], const char *text);

struct Ran {
    nwctl::Exit status;
    std::string out;
    std::string err;

    /* The answer as JSON; a test that asks for it fails when it is none. */
    nlohmann::json json() const;
};

Ran run(const std::vector<std::string> &arguments);
/* The words of one line. */
Ran runLine(const std::string &line);

/* What the network manager's typed interface was asked. */
struct Asked {
    std::string method;
    std::string document;

    bool operator==(const Asked &other) const = default;
};

/* What a document was to be applied with. */
struct ApplyOptions {
    bool isForced;
    unsigned seconds;

    bool operator==(const ApplyOptions &other) const = default;
};

/* A request as the network manager gets it. */
struct Request {
    unsigned command;
    fake::Bytes payload; /* all of it */

    bool operator==(const Request &other) const = default;
};

/* Bytes at an offset of a payload that is zero everywhere else. */
struct Patch {
    std::size_t offset;
    fake::Bytes bytes;
};
Request requestOf(unsigned command, const std::vector<Patch> &patches);
fake::Bytes textBytes(const std::string &text);

/* A platform that holds the records above and others: LLDP on, NC-SI initialised, no change in
 * progress. */
class ConfiguredTest : public fake::FakePlatformTest {
public:
    /* As nwctl's own function. */
    std::string applyByManager(const std::string &document, bool isForced, unsigned seconds);
    nwctl::CheckpointState checkpointState(const std::string &token) const;
    const std::string &differencesByManager() const
    {
        return differences_;
    }
    bool isDenied() const
    {
        return isDenied_;
    }
    /* As nwctl's own functions: a checkpoint has the token "t0ken". */
    std::string setCheckpoint(unsigned seconds);
    void endCheckpoint(nwctl::CheckpointEnd end, const std::string &token);
    const auto &session() const
    {
        return session_;
    }
    const auto &connected() const
    {
        return connected_;
    }
    bool isPlugged(const std::string &interface) const
    {
        return plugged_.contains(interface);
    }
    std::optional<unsigned> pendingSeconds() const
    {
        return pending_;
    }

protected:
    ConfiguredTest();
    ~ConfiguredTest() override;

    /* The answer to whatever is asked; without one the manager cannot be reached. */
    void answerAsked(const std::string &answer)
    {
        answer_ = answer;
    }

    /* What is asked about checkpoints is refused. */
    void refuseCheckpoints(NW_RESULT code)
    {
        refusal_ = code;
    }
    void comeInOver(const std::string &interface)
    {
        session_ = {bmc::ipv4(lanRecord().astPort[1].aucIpv4Addr), interface};
    }
    void connectTo(const bmc::Address &address)
    {
        connected_.push_back(address);
    }
    /* Interfaces that have a link; none without it. */
    void plug(std::set<std::string> interfaces)
    {
        plugged_ = std::move(interfaces);
    }
    void endPending()
    {
        pending_.reset();
    }
    void setPending(unsigned seconds)
    {
        pending_ = seconds;
    }

    /* What kernel and system differ in; nothing without it. */
    void answerDifferences(const std::string &differences)
    {
        differences_ = differences;
    }

    /* The bus lets nobody ask. */
    void denyOnBus()
    {
        isDenied_ = true;
    }

    /* A chassis manager that has published records of zeros. */
    void connectChassis();

    const std::vector<Asked> &asked() const
    {
        return asked_;
    }

    const std::vector<ApplyOptions> &applyOptions() const
    {
        return options_;
    }

    /* What was sent to the network manager, in order. */
    std::vector<Request> sentRequests() const;

private:
    std::vector<Asked> asked_;
    std::vector<ApplyOptions> options_;
    std::string answer_;
    std::string differences_ = "[]";
    bool isDenied_ = false;
    NW_RESULT refusal_ = NW_OK;
    std::optional<unsigned> pending_;
    std::optional<nwctl::RemoteSession> session_;
    std::vector<bmc::Address> connected_;
    std::set<std::string> plugged_;
};

} // namespace samples
