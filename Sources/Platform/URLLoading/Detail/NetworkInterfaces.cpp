#include <Platform/URLLoading/Detail/NetworkInterfaces.hpp>

#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace tovrel {

namespace {

struct FreeAddresses {
    void operator()(ifaddrs* addresses) const noexcept { freeifaddrs(addresses); }
};

bool leadsSomewhere(const ifaddrs& address) noexcept {
    constexpr unsigned needed = IFF_UP | IFF_RUNNING;
    if ((address.ifa_flags & needed) != needed || (address.ifa_flags & IFF_LOOPBACK) != 0 ||
        address.ifa_addr == nullptr) {
        return false;
    }
    if (address.ifa_addr->sa_family == AF_INET) {
        return true;
    }
    return address.ifa_addr->sa_family == AF_INET6 &&
           !IN6_IS_ADDR_LINKLOCAL(&reinterpret_cast<const sockaddr_in6*>(address.ifa_addr)->sin6_addr);
}

} // namespace

bool isAnyNetworkUp() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return true;
    }
    const std::unique_ptr<ifaddrs, FreeAddresses> addresses(first);
    for (const ifaddrs* address = first; address != nullptr; address = address->ifa_next) {
        if (leadsSomewhere(*address)) {
            return true;
        }
    }
    return false;
}

} // namespace tovrel
