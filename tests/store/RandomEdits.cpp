#include "RandomEdits.h"

#include "platform/foundation/Text.h"

namespace corvane {

std::string Dice::word(std::string_view words) {
    std::vector<std::string_view> all;
    for (std::size_t end = 0; end != words.npos; words.remove_prefix(end == words.npos ? 0 : end + 1)) {
        end = words.find(' ');
        all.push_back(words.substr(0, end));
    }
    return std::string(of(all));
}

void RandomEdits::populate() {
    for (int i = 0; i < 3; ++i) insertOwner();
    for (int i = 0; i < 5; ++i) insertShelf();
    for (int i = 0; i < 25; ++i) insertBook();
    books_.save();
}

void RandomEdits::step() {
    switch (dice_.below(13)) {
        case 0:
            return insertOwner();
        case 1:
            return insertShelf();
        case 2:
            return insertBook();
        case 3:
            return remove();
        case 4:
            return any<Shelf>().setHidden(dice_.oneIn(2));
        case 5:
            return any<Shelf>().setOwner(anyOrNone<Owner>());
        case 6:
            return any<Owner>().setRank(number());
        case 7:
            return any<Book>().setShelf(anyOrNone<Shelf>());
        case 8:
            return any<Book>().setWhole(anyOrNone<Book>());
        case 9:
            return any<Book>().setIsRead(dice_.oneIn(2));
        case 10:
            return any<Book>().setTitle(dice_.oneIn(2) ? u"ab" : newName());
        default:
            return any<Book>().setPages(number());
    }
}

std::u16string RandomEdits::newName() { return textFromUtf8("N" + std::to_string(++names_)); }

void RandomEdits::insertBook() {
    Book& book = books_.addBook(newName(), &any<Shelf>());
    book.setPages(number());
    if (dice_.oneIn(2)) book.setWhole(&any<Book>());
}

void RandomEdits::remove() {
    if (dice_.oneIn(12)) return books_.context().deleteObject(any<Owner>());
    if (dice_.oneIn(6)) return books_.context().deleteObject(any<Shelf>());
    books_.context().deleteObject(any<Book>());
}

}  // namespace corvane
