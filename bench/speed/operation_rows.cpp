// The operations of convert, split, join, merge and sum at 16 MiB: whole processes, compared with a
// conversion without an operation, which reads and writes the same bytes.

#include "bench/speed/corpus.h"
#include "bench/speed/table.h"
#include "bench/speed/timing.h"

#include <array>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace speed {

namespace {

constexpr std::uint32_t image_bytes_measured = 1U << 24;
constexpr double target = 3;
constexpr double stretch = 1.5;

/// A memory of 16 MiB in a file.
struct memory_form {
    const char* name;
    const char* input;   ///< file name
    const char* options; ///< for reading and writing it
};
constexpr std::array<memory_form, 5> forms = {
    {{"binary, 8 bits", "bytes.binary", "--from binary --to binary"},
     {"binary, 32 bits", "bytes.binary", "--from binary --width 32 --endian little --to binary"},
     {"hexbytes, 8 bits", "bytes.hexbytes", "--from hexbytes --to hexbytes"},
     {"hexbytes, 32 bits", "bytes.hexbytes", "--from hexbytes --width 32 --endian little --to hexbytes"},
     {"MIF, 32 bits", "bytes32.mif", "--from mif --to mif"}}};

/// The operations that are measured on each form. A memory of 32-bit words has a quarter of the addresses.
constexpr std::array operations = {"--only 0x1000..0x3EFFFF --fill 0",
                                   "--except 0x1000..0x1FFF --fill 7",
                                   "--move-to 0 --depth 0x1000000",
                                   "--fill 0",
                                   "--mask 0x3C",
                                   "--reverse-bits",
                                   "--swap-bytes",
                                   "--invert"};

std::vector<std::string> words_of(const std::string& line) {
    std::istringstream from(line);
    std::vector<std::string> words;
    for (std::string word; from >> word;) {
        words.push_back(word);
    }
    return words;
}

class operation_table {
public:
    explicit operation_table(const table_settings& with) : settings(with) {}

    void make_inputs() const {
        static_cast<void>(make_bytes(path("bytes.binary"), image_bytes_measured));
        const std::string binary = "convert --force --from binary ";
        run(binary + "--to hexbytes @bytes.binary @bytes.hexbytes");
        run(binary + "--to mif @bytes.binary @bytes8.mif");
        run(binary + "--width 32 --endian little --to mif @bytes.binary @bytes32.mif");
        run(binary + "--width 16 --endian little --mask 0xFFF --to binary @bytes.binary @bytes12.binary");
        run(binary + "--width 16 --endian little --mask 0x1FF --to binary @bytes.binary @bytes9.binary");
        run(binary + words32 + "--ecc hsiao-39-32 --to binary @bytes.binary @ecc.binary");
        run(binary + words32 + "--ecc hsiao-39-32 --to mif @bytes.binary @ecc.mif");
        run("split --force --bits 8 --from binary " + words32 + "--to binary @bytes.binary @lane%d.binary");
        run("split --force --every 4 --from binary " + words32 + "--to binary @bytes.binary @bank%d.binary");
        const std::array quarters = {"0..0x3FFFFF", "0x400000..0x7FFFFF", "0x800000..0xBFFFFF",
                                     "0xC00000..0xFFFFFF"};
        for (std::size_t number = 0; number < quarters.size(); ++number) {
            run(binary + "--to hexbytes --only " + quarters[number] + " @bytes.binary @quarter" +
                std::to_string(number) + ".hexbytes");
        }
    }
    void print_operations() const {
        for (const memory_form& form : forms) {
            for (const char* const operation : operations) {
                const std::string files = std::string(" @") + form.input + " @made";
                const std::string before = std::string("convert --force ") + form.options + " ";
                std::string with_operation = before;
                with_operation += operation;
                with_operation += files;
                print(std::string(form.name) + ", " + operation, with_operation, before + files);
            }
        }
    }
    void print_others() const {
        const std::string plain8 = "convert --force --from binary --to binary @bytes.binary @made";
        const std::string plain32 =
            "convert --force --from binary " + words32 + "--to binary @bytes.binary @made";
        const std::string mif32 = "convert --force @bytes32.mif @made.mif";
        const std::string of8 = "convert --force --from binary --to binary --endian little ";
        const std::string of32 = "convert --force --from binary " + words32 + "--to binary ";
        print("binary, --reshape 8 to 32", of8 + "--reshape 32 @bytes.binary @made", plain8);
        print("the same, high-first", of8 + "--reshape 32 --order high-first @bytes.binary @made", plain8);
        print("binary, --reshape 32 to 8", of32 + "--reshape 8 @bytes.binary @made", plain32);
        print("the same, high-first", of32 + "--reshape 8 --order high-first @bytes.binary @made", plain32);
        print("MIF, --reshape 32 to 8", "convert --force --reshape 8 @bytes32.mif @made.mif", mif32);
        print("MIF, --reshape 8 to 32", "convert --force --reshape 32 @bytes8.mif @made.mif",
              "convert --force @bytes8.mif @made.mif");
        print_odd("12 to 8", "12", "--reshape 8");
        print_odd("9 to 36", "9", "--reshape 36 --pad 0");
        print("binary, --ecc hsiao-39-32", of32 + "--ecc hsiao-39-32 @bytes.binary @made", plain32);
        print("MIF, --ecc hsiao-39-32", "convert --force --ecc hsiao-39-32 @bytes32.mif @made.mif", mif32);
        const std::string words39 = "convert --force --from binary --width 39 --endian little --to binary ";
        print("binary, --ecc-strip hsiao-39-32", words39 + "--ecc-strip hsiao-39-32 @ecc.binary @made",
              words39 + "@ecc.binary @made");
        print("MIF, --ecc-strip hsiao-39-32", "convert --force --ecc-strip hsiao-39-32 @ecc.mif @made.mif",
              "convert --force @ecc.mif @made.mif");
        const std::string split = "split --force --from binary " + words32 + "--to binary ";
        print("binary, split --bits 8", split + "--bits 8 @bytes.binary @part%d", plain32);
        print("binary, split --every 4", split + "--every 4 @bytes.binary @part%d", plain32);
        print("binary, split --blocks 4", split + "--blocks 4 @bytes.binary @part%d", plain32);
        print("MIF, split --bits 8", "split --force --bits 8 @bytes32.mif @part%d.mif", mif32);
        print("MIF, split --every 4", "split --force --every 4 @bytes32.mif @part%d.mif", mif32);
        const std::string join = "join --force --from binary --to binary --output @made ";
        print("binary, join --bits 8", join + "--endian little --bits 8 " + parts("@lane", ".binary"),
              plain32);
        print("binary, join --every 4", join + words32 + "--every 4 " + parts("@bank", ".binary"), plain32);
        print("hexbytes, merge of 4 quarters",
              "merge --force --to hexbytes --from hexbytes --output @made " + parts("@quarter", ".hexbytes"),
              "convert --force --from hexbytes --to hexbytes @bytes.hexbytes @made");
        print("binary, sum", "sum --from binary @bytes.binary", plain8);
        print("binary, sum --sha256", "sum --sha256 --from binary @bytes.binary", plain8);
        print("MIF, sum", "sum @bytes32.mif", mif32);
    }

private:
    void print_odd(const std::string& widths, const std::string& width, const std::string& operation) const {
        const std::string input = "@bytes" + width + ".binary @made";
        const std::string plain =
            "convert --force --from binary --to binary --endian little --width " + width + " ";
        print("binary, --reshape " + widths, plain + operation + " " + input, plain + input);
    }
    [[nodiscard]] static std::string parts(const std::string& name, const std::string& extension) {
        std::string all;
        for (const char* const number : {"0", "1", "2", "3"}) {
            all += name;
            all += number;
            all += extension + " ";
        }
        return all;
    }
    [[nodiscard]] std::string path(const std::string& name) const { return settings.folder + "/" + name; }
    /// The command that runs the tool with the words of @p line; "@NAME" is a file of the folder.
    [[nodiscard]] std::vector<std::string> command(const std::string& line) const {
        std::vector<std::string> words = {settings.tool};
        for (std::string& word : words_of(line)) {
            words.push_back(word.front() == '@' ? path(word.substr(1)) : std::move(word));
        }
        return words;
    }
    void run(const std::string& line) const { static_cast<void>(processor_time_of_process(command(line))); }
    void print(const std::string& work, const std::string& line, const std::string& plain) const {
        const std::vector<std::string> ours = command(line);
        const std::vector<std::string> other = command(plain);
        const comparison result = compare([&] { return processor_time_of_process(ours); },
                                          [&] { return processor_time_of_process(other); }, settings.rounds);
        constexpr double bytes_per_mb = 1e6;
        print_row({work, result.ratio, target, stretch, milliseconds(result)});
        print_row({"  peak of memory against the image",
                   peak_of_process(ours) / (image_bytes_measured / bytes_per_mb), 2, 1.2, ""});
    }

    const table_settings& settings;
    const std::string words32 = "--width 32 --endian little ";
};

} // namespace

void operation_rows(const table_settings& settings) {
    const operation_table table(settings);
    table.make_inputs();
    table.print_operations();
    table.print_others();
}

} // namespace speed
