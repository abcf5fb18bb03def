// HostsTable: what each test tried in which host, for the table that scripts/make-hosts-table
// writes.
#pragma once

#include <string>

namespace hosts {

/** Says in which host the running test tries what. Once a test; texts without "|". */
void tried(const std::string& host, const std::string& what);

/** What the table says of the running test if it passes; "passed" if nobody says anything. */
void found(const std::string& result);

/** For main, before RUN_ALL_TESTS: adds a line "| host | what | result |" for each test that called
    tried to the file that the environment variable HOSTS_TABLE names. Without it nothing is
    written. */
void recordTable();

} // namespace hosts
