#include "kvrimage/formats/mif/mif_comments.h"

#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/mif_writer.h"

namespace kvrimage {

namespace {

class mif_comment_finder : public mif_sink {
public:
    mif_comment_finder(std::string_view of, const std::function<void(const span&)>& taker)
        : contents(of),
          take(taker) {}
    void comment(const span& whole) override {
        if (whole.in(contents) != mif_first_line) {
            take(whole);
        }
    }

private:
    std::string_view contents;
    const std::function<void(const span&)>& take;
};

} // namespace

void find_mif_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    mif_comment_finder finder(contents, take);
    parse_mif(contents, finder);
}

} // namespace kvrimage
