// A small model for tests of objects and contexts: owners have shelves, shelves have books, and a book may be
// a part of another one.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/EntityObject.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/PersistentContainer.h"

namespace corvane {

class Shelf;

class Owner final : public EntityObject<Owner> {
  public:
    static constexpr std::string_view kEntityName = "Owner";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("name", PropertyKind::kString),
        attribute("rank", PropertyKind::kInt16),
        toMany("shelves", "Shelf", "owner", DeleteRule::kCascade),
    });
    using EntityObject<Owner>::EntityObject;

    std::optional<std::u16string_view> name() const { return get<"name">(); }
    void setName(std::optional<std::u16string_view> value) { set<"name">(value); }
    std::int16_t rank() const { return get<"rank">(); }
    void setRank(std::int16_t value) { set<"rank">(value); }
    RelatedObjects<Shelf> shelves() const { return relatedMany<"shelves", Shelf>(); }
};

class Book;

class Shelf final : public EntityObject<Shelf> {
  public:
    static constexpr std::string_view kEntityName = "Shelf";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("name", PropertyKind::kString),
        attribute("hidden", PropertyKind::kBoolean),
        attribute("note", PropertyKind::kString),
        toMany("books", "Book", "shelf", DeleteRule::kCascade),
        toOne("owner", "Owner", "shelves"),
    });
    using EntityObject<Shelf>::EntityObject;

    std::optional<std::u16string_view> name() const { return get<"name">(); }
    void setName(std::optional<std::u16string_view> value) { set<"name">(value); }
    bool hidden() const { return get<"hidden">(); }
    void setHidden(bool value) { set<"hidden">(value); }
    void setNote(std::optional<std::u16string_view> value) { set<"note">(value); }
    RelatedObjects<Book> books() const { return relatedMany<"books", Book>(); }
    Owner* owner() const { return related<"owner", Owner>(); }
    void setOwner(Owner* value) { set<"owner">(value); }

    int timesFreshened = 0;

  private:
    void didTurnIntoFault() override { ++timesFreshened; }
};

class Book final : public EntityObject<Book> {
  public:
    static constexpr std::string_view kEntityName = "Book";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("title", PropertyKind::kString),
        attribute("pages", PropertyKind::kInt16),
        attribute("copies", PropertyKind::kInt32),
        attribute("stamp", PropertyKind::kInt64),
        attribute("isRead", PropertyKind::kBoolean),
        attribute("rating", PropertyKind::kDouble),
        attribute("printed", PropertyKind::kDate),
        transformable("cover", "CoverTransformer"),
        toMany("parts", "Book", "whole"),
        toOne("whole", "Book", "parts"),
        toOne("shelf", "Shelf", "books"),
    });
    using EntityObject<Book>::EntityObject;

    std::optional<std::u16string_view> title() const { return get<"title">(); }
    void setTitle(std::optional<std::u16string_view> value) { set<"title">(value); }
    std::int16_t pages() const { return get<"pages">(); }
    void setPages(std::int16_t value) { set<"pages">(value); }
    std::int32_t copies() const { return get<"copies">(); }
    void setCopies(std::int32_t value) { set<"copies">(value); }
    std::int64_t stamp() const { return get<"stamp">(); }
    void setStamp(std::int64_t value) { set<"stamp">(value); }
    bool isRead() const { return get<"isRead">(); }
    void setIsRead(bool value) { set<"isRead">(value); }
    double rating() const { return get<"rating">(); }
    void setRating(double value) { set<"rating">(value); }
    std::optional<Date> printed() const { return get<"printed">(); }
    void setPrinted(std::optional<Date> value) { set<"printed">(value); }
    const Bytes* cover() const { return get<"cover">(); }
    void setCover(const Bytes* value) { set<"cover">(value); }
    RelatedObjects<Book> parts() const { return relatedMany<"parts", Book>(); }
    Book* whole() const { return related<"whole", Book>(); }
    void setWhole(Book* value) { set<"whole">(value); }
    Shelf* shelf() const { return related<"shelf", Shelf>(); }
    void setShelf(Shelf* value) { set<"shelf">(value); }
};

const ManagedObjectModel& bookModel();

/// A store of that model with a context over it. What hinders it throws.
class BookStore {
  public:
    explicit BookStore(const std::filesystem::path& file);

    ManagedObjectContext& context() { return context_; }
    PersistentStoreCoordinator& coordinator() { return coordinator_; }

    Owner& addOwner(std::u16string_view name);
    Shelf& addShelf(std::u16string_view name, Owner* owner = nullptr);
    Book& addBook(std::u16string_view title, Shelf* shelf = nullptr, Book* whole = nullptr);
    /// The only object with that name or title; throws when there is none or another one.
    Owner& owner(std::u16string_view name);
    Shelf& shelf(std::u16string_view name);
    Book& book(std::u16string_view title);
    /// Saves; an error throws.
    void save();

  private:
    PersistentStoreCoordinator coordinator_;
    ManagedObjectContext context_;
};

FetchRequest booksWhere(std::u16string_view predicate, std::vector<SortDescriptor> order = {});

/// The titles of books, in order, with blanks between; nil is "-". A failed fetch is "error: ...".
std::string titles(ManagedObjectContext& context, const FetchRequest& request);
std::string titles(const std::vector<ManagedObject*>& books);

}  // namespace corvane
