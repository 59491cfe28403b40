#include "platform/linux/LibsecretStore.h"

// GLib has parameters named like Qt's keywords; the keywords are off, but the header must come first all the
// same.
#include <libsecret/secret.h>

#include <memory>

#include "memory/Wipe.h"

namespace nimbrel {
namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
struct ErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};
struct ValueUnref {
  void operator()(SecretValue* value) const { secret_value_unref(value); }
};
struct TableUnref {
  void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};
struct ListFree {
  void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};
using Error = std::unique_ptr<GError, ErrorFree>;
using Value = std::unique_ptr<SecretValue, ValueUnref>;
using Service = std::unique_ptr<SecretService, Unref>;
using Attributes = std::unique_ptr<GHashTable, TableUnref>;
using Items = std::unique_ptr<GList, ListFree>;

const SecretSchema* schema() {
  static const SecretSchema value = [] {
    SecretSchema made{};
    made.name = "app.nimbrel.Nimbrel";
    made.flags = SECRET_SCHEMA_NONE;
    made.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
    made.attributes[1] = {"account", SECRET_SCHEMA_ATTRIBUTE_STRING};
    return made;
  }();
  return &value;
}

Attributes attributesOf(const SecretItem& item) {
  return Attributes(secret_attributes_build(schema(), "service", item.service.toUtf8().constData(), "account",
                                            item.account.toUtf8().constData(), nullptr));
}

/// The error's code, never 0, which would look like success.
int statusOf(const Error& error) {
  return error && error->code != 0 ? error->code : -1;
}

/// Whether nobody offers a Secret Service.
bool isUnavailable(const Error& error) {
  return g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
         g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
}

SecretLookup failed(const Error& error) {
  const auto outcome =
      isUnavailable(error) ? SecretLookup::Outcome::unavailable : SecretLookup::Outcome::failed;
  return {.outcome = outcome, .secret = {}, .status = statusOf(error)};
}

/// The bytes that were stored: what is no Base64 text was not stored by this program and is given back as it
/// is.
QByteArray decoded(const QByteArray& stored) {
  auto result = QByteArray::fromBase64Encoding(stored, QByteArray::AbortOnBase64DecodingErrors);
  return result ? std::move(*result) : stored;
}

/// Makes the item readable, which may ask the user, and reads it.
SecretLookup readStored(SecretService* service, ::SecretItem* item) {
  GError* raw = nullptr;
  if (secret_item_get_locked(item)) {
    const std::unique_ptr<GList, decltype(&g_list_free)> locked(g_list_append(nullptr, item), &g_list_free);
    const int unlocked = secret_service_unlock_sync(service, locked.get(), nullptr, nullptr, &raw);
    const Error error(raw);
    if (error || unlocked == 0) return failed(error);
  }
  raw = nullptr;
  const bool loaded = secret_item_load_secret_sync(item, nullptr, &raw);
  const Error error(raw);
  const Value value(loaded ? secret_item_get_secret(item) : nullptr);
  if (!value) return failed(error);
  gsize length = 0;
  const gchar* const bytes = secret_value_get(value.get(), &length);
  const WipedBytes stored(QByteArray(bytes, static_cast<qsizetype>(length)));
  return {.outcome = SecretLookup::Outcome::found, .secret = decoded(stored.bytes()), .status = 0};
}

}  // namespace

SecretLookup LibsecretStore::find(const SecretItem& item) {
  GError* raw = nullptr;
  const Service service(secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, nullptr, &raw));
  const Error serviceError(raw);
  if (!service) return {SecretLookup::Outcome::unavailable, {}, statusOf(serviceError)};
  raw = nullptr;
  // Locked items count as existing: a second key must never be made beside one that is only out of reach.
  const Attributes attributes = attributesOf(item);
  const Items items(secret_service_search_sync(service.get(), schema(), attributes.get(), SECRET_SEARCH_NONE,
                                               nullptr, &raw));
  const Error searchError(raw);
  if (searchError) return failed(searchError);
  if (!items) return {.outcome = SecretLookup::Outcome::notFound, .secret = {}, .status = 0};
  return readStored(service.get(), static_cast<::SecretItem*>(items->data));
}

int LibsecretStore::add(const SecretItem& item, const QByteArray& secret) {
  GError* raw = nullptr;
  const WipedBytes text(secret.toBase64());
  const Value value(secret_value_new(text.bytes().constData(), text.bytes().size(), "text/plain"));
  const Attributes attributes = attributesOf(item);
  const bool stored = secret_password_storev_binary_sync(
      schema(), attributes.get(), SECRET_COLLECTION_DEFAULT, "Nimbrel", value.get(), nullptr, &raw);
  const Error error(raw);
  if (!stored) return statusOf(error);
  // Believed only when it can be read back.
  SecretLookup check = find(item);
  const WipedBytes readBack(std::move(check.secret));
  return check.outcome == SecretLookup::Outcome::found && readBack.bytes() == secret ? 0 : -1;
}

}  // namespace nimbrel
