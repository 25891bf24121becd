#include "tests/sandbox/host_listing.h"

#include <ifaddrs.h>
#include <netdb.h>
#include <sys/stat.h>
#include <sys/utsname.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <vector>

#include "tests/support/descriptor.h"

namespace {

// Somebody may keep a whole compiler in /opt; the times of its files have to do.
constexpr off_t largest_hashed = 1 << 20;

std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void list_time(std::ostream& out, const timespec& time) {
    out << ' ' << time.tv_sec << '.' << time.tv_nsec;
}

std::string describe_file(const std::filesystem::path& path) {
    struct stat status = {};
    checked(lstat(path.c_str(), &status), "lstat");
    std::ostringstream out;
    out << path.string() << std::oct << ' ' << status.st_mode << std::dec << ' ' << status.st_uid
        << ':' << status.st_gid << ' ' << status.st_size;
    list_time(out, status.st_mtim);
    list_time(out, status.st_ctim);
    if (S_ISLNK(status.st_mode))
        out << " -> " << std::filesystem::read_symlink(path).string();
    if (S_ISREG(status.st_mode) && status.st_size <= largest_hashed)
        out << ' ' << std::hash<std::string>()(content_of(path));
    return out.str();
}

void list_tree(std::vector<std::string>& lines, const std::string& directory) {
    lines.push_back(describe_file(directory));
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory, options))
        lines.push_back(describe_file(entry.path()));
}

std::string numeric_address(const sockaddr& address) {
    const socklen_t length =
        address.sa_family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
    char text[NI_MAXHOST] = "";
    getnameinfo(&address, length, text, sizeof text, nullptr, 0, NI_NUMERICHOST);
    return text;
}

void list_interfaces(std::vector<std::string>& lines) {
    ifaddrs* interfaces = nullptr;
    checked(getifaddrs(&interfaces), "getifaddrs");
    for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
        std::ostringstream out;
        out << "interface " << entry->ifa_name << " flags " << entry->ifa_flags;
        if (entry->ifa_addr != nullptr)
            out << ' ' << numeric_address(*entry->ifa_addr);
        lines.push_back(out.str());
    }
    freeifaddrs(interfaces);
}

void list_names(std::vector<std::string>& lines) {
    utsname names = {};
    checked(uname(&names), "uname");
    lines.push_back(std::string("host name ") + names.nodename);
    lines.push_back("domain name " + content_of("/proc/sys/kernel/domainname"));
}

}  // namespace

std::string list_host() {
    std::vector<std::string> lines;
    for (const char* directory : {"/etc", "/usr/sbin", "/opt", "/var/opt"})
        list_tree(lines, directory);
    list_interfaces(lines);
    list_names(lines);
    std::sort(lines.begin(), lines.end());

    std::string listing = content_of("/proc/self/mountinfo");
    for (const std::string& line : lines)
        listing += line + "\n";
    return listing;
}
