#include "platform/socket.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    plat::SocketsStartup();
    int rc = RUN_ALL_TESTS();
    plat::SocketsCleanup();
    return rc;
}
