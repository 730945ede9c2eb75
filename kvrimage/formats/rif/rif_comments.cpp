#include "kvrimage/formats/rif/rif_comments.h"

#include "kvrimage/formats/rif/rif_parser.h"

namespace kvrimage {

namespace {

class rif_comment_finder : public rif_sink {
public:
    explicit rif_comment_finder(const std::function<void(const span&)>& taker) : found(taker) {}
    void take(const rif_piece& piece) override {
        if (piece.what == rif_piece::kind::comment) {
            found(piece.where);
        }
    }

private:
    const std::function<void(const span&)>& found;
};

} // namespace

void find_rif_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    rif_comment_finder finder(take);
    rif_parser(contents, finder).parse();
}

} // namespace kvrimage
