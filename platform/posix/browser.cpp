#include "platform/browser.h"

#include "platform/utf.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

extern char** environ;

namespace plat {

namespace {

// The user's browser: the first program of $BROWSER, else the system's web browser. Never a
// desktop opener: it would run what a device sent.
std::string BrowserProgram() {
    if (const char* chosen = std::getenv("BROWSER"); chosen && *chosen) {
        std::string first = chosen;
        first = first.substr(0, first.find(':'));
        return first.substr(0, first.find(' '));
    }
    for (const char* candidate : {"/usr/bin/x-www-browser", "/usr/bin/www-browser"}) {
        if (access(candidate, X_OK) == 0) return candidate;
    }
    return {};
}

}  // namespace

// The address is the browser's one argument; the child is not waited for beyond its start.
bool NativeLaunchBrowser(const std::u16string& address) {
    std::string program = BrowserProgram();
    if (program.empty()) return false;
    std::string argument = Utf16ToUtf8(address);
    char* args[] = {program.data(), argument.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, program.c_str(), nullptr, nullptr, args, environ) == 0) {
        waitpid(child, nullptr, WNOHANG);
    }
    return true;
}

}  // namespace plat
