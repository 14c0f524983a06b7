#pragma once

#include "command.h"

/// The commands, in the files that bear their names.
namespace zel::tool {

extern const Command create;
extern const Command demo; // in create.cpp
extern const Command refresh;
extern const Command passwd;
extern const Command backup;
extern const Command restore;
extern const Command copy;
extern const Command import;
extern const Command sql;
extern const Command check; // in check_command.cpp

} // namespace zel::tool
