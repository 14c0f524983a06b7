// Fills the catalog that all measurements share: fill_books FOLDER [VOUCHERS]
#include "books.h"

int main(int argc, char **argv) {
    bench::Size size;
    if (argc > 2)
        size.vouchers = std::stoi(argv[2]);
    bench::fillBooks(std::string(argv[1]) + "/ZEL.db", size);
}
