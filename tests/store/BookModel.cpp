#include "BookModel.h"

#include <stdexcept>
#include <variant>

#include "platform/foundation/Text.h"

namespace corvane {

namespace {

template <class Object>
Object& onlyObject(ManagedObjectContext& context, std::u16string_view format, std::u16string_view name) {
    FetchRequest request;
    request.predicate = fixedPredicate(format, {Value(std::u16string(name))});
    const std::vector<Object*> found = context.fetch<Object>(request);
    if (found.size() != 1) {
        throw std::runtime_error(std::to_string(found.size()) + " are named " + utf8FromText(name));
    }
    return *found.front();
}

}  // namespace

const ManagedObjectModel& bookModel() {
    static const ManagedObjectModel model(
        "Books", {Owner::entityDescription(), Shelf::entityDescription(), Book::entityDescription()});
    return model;
}

BookStore::BookStore(const std::filesystem::path& file) : coordinator_(bookModel()), context_(coordinator_) {
    PersistentStoreDescription description;
    description.file = file;
    description.migratesAutomatically = true;
    description.infersMappingModel = true;
    description.busyTimeout = std::chrono::milliseconds(50);
    if (const auto error = coordinator_.addStore(description)) throw std::runtime_error(error->message);
}

Owner& BookStore::addOwner(std::u16string_view name) {
    auto& owner = context_.insert<Owner>();
    owner.setName(name);
    return owner;
}

Shelf& BookStore::addShelf(std::u16string_view name, Owner* owner) {
    auto& shelf = context_.insert<Shelf>();
    shelf.setName(name);
    shelf.setOwner(owner);
    return shelf;
}

Book& BookStore::addBook(std::u16string_view title, Shelf* shelf, Book* whole) {
    auto& book = context_.insert<Book>();
    book.setTitle(title);
    book.setShelf(shelf);
    book.setWhole(whole);
    return book;
}

Owner& BookStore::owner(std::u16string_view name) { return onlyObject<Owner>(context_, u"name == %@", name); }

Shelf& BookStore::shelf(std::u16string_view name) { return onlyObject<Shelf>(context_, u"name == %@", name); }

Book& BookStore::book(std::u16string_view title) { return onlyObject<Book>(context_, u"title == %@", title); }

void BookStore::save() {
    if (const auto error = context_.save()) throw std::runtime_error(error->message);
}

FetchRequest booksWhere(std::u16string_view predicate, std::vector<SortDescriptor> order) {
    FetchRequest request;
    request.entityName = Book::kEntityName;
    if (!predicate.empty()) request.predicate = fixedPredicate(predicate);
    request.sortDescriptors = std::move(order);
    return request;
}

std::string titles(ManagedObjectContext& context, const FetchRequest& request) {
    const auto result = context.executeFetch(request);
    if (const auto* error = std::get_if<StoreError>(&result)) return "error: " + error->message;
    return titles(std::get<std::vector<ManagedObject*>>(result));
}

std::string titles(const std::vector<ManagedObject*>& books) {
    std::string text;
    for (const ManagedObject* object : books) {
        const auto title = static_cast<const Book*>(object)->title();
        text += (text.empty() ? "" : " ") + (title ? utf8FromText(*title) : "-");
    }
    return text;
}

}  // namespace corvane
