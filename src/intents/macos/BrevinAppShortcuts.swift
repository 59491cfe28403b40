import AppIntents

/// The shortcuts that the program declares, in the order in which they are offered.
struct BrevinAppShortcuts: AppShortcutsProvider {
  static var appShortcuts: [AppShortcut] {
    AppShortcut(
      intent: CopyLatestClipIntent(),
      phrases: ["Copiar lo último en \(.applicationName)"],
      shortTitle: "Copiar último",
      systemImageName: "doc.on.clipboard"
    )
    AppShortcut(
      intent: SearchHistoryIntent(),
      phrases: ["Buscar historial en \(.applicationName)"],
      shortTitle: "Buscar historial",
      systemImageName: "magnifyingglass"
    )
    AppShortcut(
      intent: ToggleCaptureIntent(),
      phrases: ["Pausar o reanudar captura en \(.applicationName)"],
      shortTitle: "Pausar captura",
      systemImageName: "pause.circle"
    )
    AppShortcut(
      intent: PasteFromCollectionIntent(),
      phrases: ["Pegar desde colección en \(.applicationName)"],
      shortTitle: "Pegar colección",
      systemImageName: "rectangle.on.clipboard"
    )
  }
}
