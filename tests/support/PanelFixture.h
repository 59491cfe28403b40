#pragma once

#include "panel/PanelServices.h"
#include "support/StoreFixture.h"

namespace nimbrel::testing {

/// A store, and everything else that the panel works with.
class PanelFixture : public StoreFixture {
 protected:
  /// After the launch of the store.
  PanelServices services() {
    return {.store = store(),
            .permission = permission,
            .opener = opener,
            .settings = settings,
            .clock = clock,
            .keys = keys,
            .keyState = [this] { return keyState; },
            .authenticate = authenticate,
            .icons = icons};
  }

  FakeApplicationCatalog applications;
  InstalledIcons icons{applications, kRowIconSize};
  FakeAccessibilityTrust trust;
  FakeOpener opener;
  FakeKeyReader keys;
  PermissionState permission{trust, pasteboard, opener};
  HistoryCipher::KeyState keyState = HistoryCipher::KeyState::ready;
  Authenticate authenticate;
};

}  // namespace nimbrel::testing
