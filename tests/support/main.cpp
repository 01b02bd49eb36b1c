#include "platform/socket.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    plat::SocketsStartup();
    int rc = RUN_ALL_TESTS();
    testing_support::RemoveThisRunsSettings();
    plat::SocketsCleanup();
    return rc;
}
