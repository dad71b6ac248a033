// GUser: an account, and the task lists under it.
#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store/EntityObject.h"

namespace corvane {

class GList;

/// Account types with a meaning here; every other number is a kind of server account.
inline constexpr std::int16_t kLocalAccountType = 0;  ///< kept on the device only
/// Never shown among accounts; its lists are numbered from 5000.
inline constexpr std::int16_t kUnlistedAccountType = 5000;

/// No operation saves; the context's owner does.
class GUser final : public EntityObject<GUser> {
  public:
    static constexpr std::string_view kEntityName = "GUser";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("displayOrder", PropertyKind::kInt16),
        toMany("lists", "GList", "user", DeleteRule::kCascade),
        attribute("createdTimestamp", PropertyKind::kDate),
        attribute("name", PropertyKind::kString),
        attribute("password", PropertyKind::kString),
        attribute("accountType", PropertyKind::kInt16),
        attribute("isDefault", PropertyKind::kBoolean),
    });

    using EntityObject<GUser>::EntityObject;

    /// A new account of type 0 at a position among the listed accounts, without name and credential.
    ///
    /// @param displayOrder  negative or beyond the number of listed accounts appends
    static GUser& insertNewAccountToContext(ManagedObjectContext& context, std::int32_t displayOrder);

    // Attributes
    /// Position among the listed accounts, from 0.
    std::int16_t displayOrder() const { return get<"displayOrder">(); }
    void setDisplayOrder(std::int16_t value) { set<"displayOrder">(value); }
    /// Every list, removed ones included.
    RelatedObjects<GList> lists() const { return relatedMany<"lists", GList>(); }
    std::optional<Date> createdTimestamp() const { return get<"createdTimestamp">(); }
    void setCreatedTimestamp(std::optional<Date> value) { set<"createdTimestamp">(value); }
    std::optional<std::u16string_view> name() const { return get<"name">(); }
    void setName(std::optional<std::u16string_view> value) { set<"name">(value); }
    std::optional<std::u16string_view> password() const { return get<"password">(); }
    void setPassword(std::optional<std::u16string_view> value) { set<"password">(value); }
    std::int16_t accountType() const { return get<"accountType">(); }
    void setAccountType(std::int16_t value) { set<"accountType">(value); }
    bool isDefault() const { return get<"isDefault">(); }
    void setIsDefault(bool value) { set<"isDefault">(value); }

    /// The last error met for the account. Never stored; gone when the object turns into a fault.
    const std::exception_ptr& lastError() const { return lastError_; }
    void setLastError(std::exception_ptr error) { lastError_ = std::move(error); }

    // Lists
    /// The list marked as default, else the first by position; null without lists.
    GList* defaultList() const;
    std::vector<GList*> orderedLists() const;  ///< live lists by position
    std::vector<GList*> orderedListsByTitle() const;
    std::vector<GList*> removedLists() const;  ///< tombstones by position
    /// The list with a server id, a removed one too; null for none and for the empty id.
    GList* findListId(std::optional<std::u16string_view> listId) const;

    // Maintenance
    /// Clears name, credential and every server id; removed lists and tasks leave the store.
    void makeAccountLocal();
    /// Deletes the account with its lists and their tasks; when only one account is listed, this account is
    /// made local instead, whichever it is.
    void deleteAccount();
    /// Renumbers the tasks of every live list, then the lists. @return whether any position changed
    bool fixAllDisplayOrders();
    /// Clears the completed tasks of every live list.
    void deleteCompletedTasks();

  protected:
    void didTurnIntoFault() override {
        if (isFault()) lastError_ = nullptr;
    }

  private:
    std::exception_ptr lastError_;
};

}  // namespace corvane
