// The main function of the tests in hosts.
#include "tests/hosts/HostsTable.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    hosts::recordTable();
    return RUN_ALL_TESTS();
}
