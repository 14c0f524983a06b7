// Fills the catalog that all measurements share: fill_books FOLDER
#include "books.h"

int main(int, char **argv) {
    bench::fillBooks(std::string(argv[1]) + "/ZEL.db", {});
}
