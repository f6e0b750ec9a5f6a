// Prints docs/catalogue.md from the catalogue.
#include <iostream>

#include "refsdk/catalogue_markdown.h"

int main() {
    std::cout << tovi::ref::docs::catalogueMarkdown();
    return 0;
}
