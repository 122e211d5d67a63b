// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Another host on the network of an interface: the far end of its pair in a namespace of its own.
// For programs that run in the sandbox.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace support {

class FarHost {
public:
    // Takes the far end away from this host until the object goes.
    explicit FarHost(std::string interface);
    ~FarHost();
    FarHost(const FarHost &) = delete;
    FarHost &operator=(const FarHost &) = delete;

    // "ADDRESS/LENGTH" on the far end of the pair, or elsewhere behind the host.
    void own(const std::string &address) const;
    void ownBehind(const std::string &address) const;
    // None any more on the far end.
    void disown() const;
    std::string mac() const;
    // The wire: without it this end has no carrier.
    void plug(bool isPlugged) const;

    // A socket that listens on an address of the host's.
    int listenOn(const std::string &address, std::uint16_t port) const;
    // A socket of the host's that sends and receives ARP packets on the far end.
    int arpSocket() const;

private:
    void command(const std::string &words) const;
    int openThere(const std::function<int()> &open) const;

    std::string interface_;
};

// Connects from here; whether somebody listens there and was reached within two seconds.
bool canConnect(const std::string &address, std::uint16_t port);
// Whether a connection to the listening socket waits.
bool hasCaller(int listener);

} // namespace support
