#include "tools/kvrmem/commands/program.h"
#include "tools/kvrmem/platform/interruption.h"
#include "tools/kvrmem/platform/system.h"

int main(int count, char** words) {
    kvrmem::system::prepare(count, words);
    kvrmem::clean_up_when_interrupted();
    return kvrmem::run_program(count, words);
}
