// ExpectedFailures: the reviewed list of validator tests that fail although the plug-in is as it
// has to be.
#pragma once

#include "tests/hosts/validator/ValidatorReport.h"

#include <string>
#include <vector>

namespace hosts {

/** The file's form, an entry a paragraph, # for comments:

        test:   SUITE / TEST
        error:  the text of an error line of it; as many as it prints, in order
        reason: why that is right, in one or more lines
                that begin with blanks */
class ExpectedFailures {
public:
    struct Entry {
        std::string test;
        std::vector<std::string> errors;
        std::string reason;
    };

    /** @param text the file's content */
    static ExpectedFailures read(const std::string& text);

    /** What does not go together, a line each; empty if all is as expected: a failure or an error
        line that is not listed, a listed one that did not come, an entry without a test or a
        reason, a line that is none of the above, a run that broke off. */
    std::vector<std::string> compare(const ValidatorReport& report) const;

    const std::vector<Entry>& all() const { return entries; }

private:
    std::vector<Entry> entries;
    std::vector<std::string> mistakes; ///< in the file

    void readLine(const std::string& line);
    void readField(const std::string& field, const std::string& value);
    void compareFailures(const ValidatorReport& report, std::vector<std::string>& complaints) const;
    void compareEntries(const ValidatorReport& report, std::vector<std::string>& complaints) const;
    const Entry* find(const std::string& test) const;
};

} // namespace hosts
