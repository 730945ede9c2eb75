#include "tools/kvrmem/command_line/help_text.h"

#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/command_line/help_topics.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>

namespace kvrmem {

std::string title_of(const option_entry& entry) {
    std::string title = fmt::format("{}--{}", with_letter("-{}, ", entry), entry.name);
    if (entry.value != nullptr) {
        title.append(" ").append(entry.value);
    }
    return title;
}

std::string overview() {
    std::string text =
        with_names("kvrmem reads, checks, edits, compares, draws and converts memory initialization files:\n"
                   "{titles}.\n\n"
                   "Examples\n"
                   "  $ kvrmem convert sine.mif sine.hex\n"
                   "  $ kvrmem check boot.mif\n"
                   "  $ kvrmem dump sine.mif\n"
                   "  $ kvrmem set boot.mif 0x10=0xDEAD\n"
                   "  $ kvrmem diff old.mif new.hex\n\n"
                   "Commands\n");
    for (const command* entry : all_commands()) {
        text += fmt::format("  {:<10}{}\n", entry->name, entry->summary);
    }
    text += "\nTopics\n";
    for (const help_topic& topic : help_topics()) {
        text += fmt::format("  {:<10}{}\n", topic.name, topic.summary);
    }
    return text +
           "\nkvrmem help COMMAND (or COMMAND --help) describes a command, kvrmem help TOPIC a topic;\n"
           "kvrmem --version shows the version.\n"
           "kvrmem --generate man, bash, zsh or fish prints a manual page or a completion.\n"
           "Exit codes: 0 success, 1 negative answer, 2 bad input, 3 input/output failure,\n"
           "4 wrong usage, 5 internal or out of memory.\n";
}

std::string help_for(const command& which) {
    const help_topic* const topic = topic_called(which.name);
    std::string text =
        fmt::format("{}\n\nExamples\n{}\nUsage\n  kvrmem {} [options] {}\n\n{}\n{}Options\n", which.summary,
                    which.examples, which.name, which.operands, with_names(which.description),
                    topic != nullptr ? page_of(*topic) + "\n" : "");
    for (const option_entry& entry : option_table()) {
        if (takes(which, entry.id)) {
            text += fmt::format("  {:<24}{}\n", title_of(entry), entry.help);
        }
    }
    return text;
}

} // namespace kvrmem
