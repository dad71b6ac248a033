// A fresh store, and lists and accounts as one text.
#pragma once

#include <string>
#include <vector>

#include "ModelFixture.h"
#include "model/Accounts.h"
#include "platform/foundation/Text.h"

namespace corvane {

class QueryTest : public ModelTest {
  protected:
    /// "A0 B1*": names with positions, '*' the default.
    template <class Object>
    static std::string text(const std::vector<Object*>& objects) {
        std::string result;
        for (const Object* object : objects) {
            if (!result.empty()) result += ' ';
            result += utf8FromText(object->name().value_or(u"-")) + std::to_string(object->displayOrder());
            if (object->isDefault()) result += '*';
        }
        return result;
    }

    static std::string names(const std::vector<GTask*>& tasks) {
        std::string result;
        for (const GTask* task : tasks) result += (result.empty() ? "" : " ") + nameOf(task);
        return result;
    }

    /// An account of a type with empty lists of these names.
    GUser& accountWithLists(std::int16_t type, const std::vector<std::u16string>& listNames) {
        GUser& made = makeAccount(context(), u"Made");
        made.setAccountType(type);
        constexpr std::int32_t kAtTheEnd = -1;
        for (const std::u16string& name : listNames) {
            GList::insertNewListToAccount(made, kAtTheEnd).setName(name);
        }
        return made;
    }

    static GList& listNamed(const GUser& account, std::u16string_view name) {
        for (GList* list : account.lists()) {
            if (list->name() == name) return *list;
        }
        ADD_FAILURE() << "no list " << utf8FromText(name);
        std::abort();
    }
};

}  // namespace corvane
