#include "tools/kvrmem/commands/program.h"
#include "tools/kvrmem/platform/interruption.h"

int main(int count, char** words) {
    kvrmem::clean_up_when_interrupted();
    return kvrmem::run_program(count, words);
}
