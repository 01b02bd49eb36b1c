#include "platform/browser.h"

#include "platform/utf.h"

#include <spawn.h>
#include <sys/wait.h>

#include <string>

extern char** environ;

namespace plat {

// The desktop's opener; the child is not waited for beyond its start.
void NativeLaunchBrowser(const std::u16string& argument) {
    std::string text = Utf16ToUtf8(argument);
    char opener[] = "xdg-open";
    char* args[] = {opener, text.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, opener, nullptr, nullptr, args, environ) == 0) {
        waitpid(child, nullptr, WNOHANG);
    }
}

}  // namespace plat
