// HostsTable: the rows of the table that scripts/make-hosts-table writes.
#pragma once

#include <string>

namespace hosts {

/** Names the host and what the running test tries in it. Once a test; texts without "|". */
void tried(const std::string& host, const std::string& what);

/** Sets the result that the table shows if the running test passes. Without it that is "passed". */
void found(const std::string& result);

/** For main, before RUN_ALL_TESTS: each test that called tried adds "| host | what | result |" to
    the file that the environment variable HOSTS_TABLE names, if it is set. */
void recordTable();

} // namespace hosts
