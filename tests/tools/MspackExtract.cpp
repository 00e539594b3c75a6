// Extracts every file of a compiled help file with libmspack's decompressor, and looks each one
// up again through the directory's index chunks and quick references the way a viewer finds a
// page. Usage: mspack_extract BOOK FOLDER. Prints one name a line; exits 0 when every file was
// extracted and found, 1 when the book does not open, 2 on an extraction error, 3 when a lookup
// misses or disagrees with the listing.
#include <mspack.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

bool LookUpAgrees(mschm_decompressor* reader, mschmd_header* fast, const mschmd_file* listed) {
    mschmd_file found{};
    const int error = reader->fast_find(reader, fast, listed->filename, &found, sizeof(found));
    return error == MSPACK_ERR_OK && found.section && found.section->id == listed->section->id &&
           found.offset == listed->offset && found.length == listed->length;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: mspack_extract BOOK FOLDER\n");
        return 1;
    }
    mschm_decompressor* reader = mspack_create_chm_decompressor(nullptr);
    mschmd_header* book = reader ? reader->open(reader, argv[1]) : nullptr;
    if (!book) {
        std::fprintf(stderr, "cannot open %s\n", argv[1]);
        return 1;
    }
    mschmd_header* fast = reader->fast_open(reader, argv[1]);
    int result = fast ? 0 : 3;
    for (mschmd_file* file = book->files; file; file = file->next) {
        const std::filesystem::path target = std::string(argv[2]) + file->filename;
        std::filesystem::create_directories(target.parent_path());
        if (reader->extract(reader, file, target.c_str()) != MSPACK_ERR_OK) {
            std::fprintf(stderr, "cannot extract %s: error %d\n", file->filename,
                         reader->last_error(reader));
            result = 2;
        } else if (fast && !LookUpAgrees(reader, fast, file)) {
            std::fprintf(stderr, "lookup of %s disagrees with the listing\n", file->filename);
            if (result == 0) result = 3;
        }
        std::printf("%s\n", file->filename);
    }
    if (fast) reader->close(reader, fast);
    reader->close(reader, book);
    mspack_destroy_chm_decompressor(reader);
    return result;
}
