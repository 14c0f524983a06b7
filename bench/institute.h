#pragma once

#include <string>

namespace bench {

/// What a generated institute holds; the same for the same numbers, every time.
struct InstituteSize {
    int students = 20'000;
    int subjects = 5; ///< lines of each application, 1 to 5; of every fiftieth student one is inactive and
                      ///< carried forward
    int receipts = 100'000; ///< of one line, spread over all students and their subjects
    int sessions = 6;       ///< applications are spread over them
    int firstReceipt = 1;   ///< VouNo
};

/// Adds the institute to the catalog `database`, beside the books that it has, then runs ANALYZE. Eight
/// courses of five subjects, of each of which some money came with the application; students' accounts are numbered on from the last account. Gives the first
/// student's account. Ends the process with a message when SQLite refuses.
int fillInstitute(const std::string &database, const InstituteSize &size = {});

} // namespace bench
