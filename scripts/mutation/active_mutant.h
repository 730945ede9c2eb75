// What the programs that scripts/mutate builds share.

#pragma once

/// The sources with mutants declare these two. The marks of parts are indexed by the number of the first
/// mutant in the part.
extern unsigned kvr_active_mutant;
constexpr unsigned long parts_size = 1U << 16;
extern unsigned char kvr_entered_parts[parts_size];

/// The value of an environment variable; 0 if it is not set.
unsigned number_in(const char* variable);
