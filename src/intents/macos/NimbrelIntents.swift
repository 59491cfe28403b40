import AppIntents

/// Puts the most recent text that is no secret on the pasteboard.
struct CopyLatestClipIntent: AppIntent {
  static let title: LocalizedStringResource = "Copiar último texto"
  static let openAppWhenRun: Bool = false

  @MainActor
  func perform() async throws -> some IntentResult & ProvidesDialog {
    let copied = try await reply(to: NimbrelIntentCopyLatestClip)
    return .result(dialog: "\(copied.message)")
  }
}

/// Looks for a text in the history.
struct SearchHistoryIntent: AppIntent {
  static let title: LocalizedStringResource = "Buscar historial"
  static let openAppWhenRun: Bool = false

  @Parameter(title: "Texto", description: "Texto que quieres buscar en el historial.")
  var text: String

  static var parameterSummary: some ParameterSummary {
    Summary("Buscar \(\.$text) en el historial")
  }

  @MainActor
  func perform() async throws -> some IntentResult & ReturnsValue<[String]> & ProvidesDialog {
    let found = try await reply(to: NimbrelIntentSearchHistory, about: text)
    return .result(value: found.texts, dialog: "\(found.message)")
  }
}

/// Pauses the capture, or resumes it.
struct ToggleCaptureIntent: AppIntent {
  static let title: LocalizedStringResource = "Pausar o reanudar captura"
  static let openAppWhenRun: Bool = false

  @MainActor
  func perform() async throws -> some IntentResult & ProvidesDialog {
    let toggled = try await reply(to: NimbrelIntentToggleCapture)
    return .result(dialog: "\(toggled.message)")
  }
}

/// Pastes the most recent text of a collection that is no secret where the user is.
struct PasteFromCollectionIntent: AppIntent {
  static let title: LocalizedStringResource = "Pegar desde colección"
  static let openAppWhenRun: Bool = false

  @Parameter(title: "Colección", description: "Colección desde la que quieres pegar.")
  var collection: CollectionEntity

  static var parameterSummary: some ParameterSummary {
    Summary("Pegar desde \(\.$collection)")
  }

  @MainActor
  func perform() async throws -> some IntentResult {
    _ = try await reply(to: NimbrelIntentPasteFromCollection, about: collection.id)
    return .result()
  }
}
