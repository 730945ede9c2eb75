#pragma once

#include "tools/kvrmem/command_line.h"

namespace kvrmem {

extern const command convert_command;
extern const command info_command;

} // namespace kvrmem
