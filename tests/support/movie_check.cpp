#include "support/movie_check.h"

namespace SwfTest {

std::string WrittenMovie::Problems() const {
    std::string all;
    for (const std::string& p : result.problems)
        all += p + "\n";
    return all;
}

WrittenMovie WriteAndValidate(ZoFlash::ZoSWFMovie& movie) {
    ZoFlash::ZoFMemorySink sink;
    movie.WriteMovie(sink);
    WrittenMovie written;
    written.bytes = sink.TakeBytes();
    written.result = ValidateSwf(written.bytes);
    return written;
}

}  // namespace SwfTest
