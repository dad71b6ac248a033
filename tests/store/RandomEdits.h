// Random choices, and random edits of a store of the book model.
#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "BookModel.h"

namespace corvane {

class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(engine_);
    }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class Choices>
    const auto& of(const Choices& choices) {
        return choices[below(std::size(choices))];
    }
    /// One of the words of a text with single blanks between them.
    std::string word(std::string_view words);

  private:
    std::mt19937 engine_;
};

class RandomEdits {
  public:
    RandomEdits(BookStore& books, Dice& dice) : books_(books), dice_(dice) {}

    /// Some objects of every kind, saved.
    void populate();
    /// Inserts, deletes or changes something, without a save.
    void step();

  private:
    /// One of the objects; makes the first one.
    template <class Object>
    Object& any() {
        const std::vector<Object*> all = books_.context().fetch<Object>({});
        return all.empty() ? books_.context().insert<Object>() : *dice_.of(all);
    }
    /// The same, or none.
    template <class Object>
    Object* anyOrNone() {
        return dice_.oneIn(4) ? nullptr : &any<Object>();
    }
    std::u16string newName();
    std::int16_t number() { return static_cast<std::int16_t>(dice_.below(9)); }
    void insertOwner() { books_.addOwner(newName()).setRank(number()); }
    void insertShelf() { books_.addShelf(newName(), &any<Owner>()).setHidden(dice_.oneIn(2)); }
    void insertBook();
    void remove();

    BookStore& books_;
    Dice& dice_;
    int names_ = 0;
};

}  // namespace corvane
