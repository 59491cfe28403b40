import AppIntents

/// A collection as the automation sees it: its name is what it is known by and what is shown of it.
struct CollectionEntity: AppEntity {
  static let typeDisplayRepresentation: TypeDisplayRepresentation = "Colección"
  static let defaultQuery = CollectionEntityQuery()

  let id: String

  var displayRepresentation: DisplayRepresentation {
    DisplayRepresentation(title: "\(id)")
  }
}

/// Finds the collections that there are; while the program starts, there are none.
struct CollectionEntityQuery: EntityQuery {
  /// Those with exactly these names, in the order in which they were asked for.
  @MainActor
  func entities(for identifiers: [CollectionEntity.ID]) async throws -> [CollectionEntity] {
    let names = await collectionNames()
    return identifiers.filter { wanted in names.contains { isSame($0, wanted) } }.map { CollectionEntity(id: $0) }
  }

  /// All of them, in the order of the user's language.
  @MainActor
  func suggestedEntities() async throws -> [CollectionEntity] {
    await collectionNames().map { CollectionEntity(id: $0) }
  }

  @MainActor
  private func collectionNames() async -> [String] {
    (try? await reply(to: NimbrelIntentListCollections).texts) ?? []
  }

  /// Letter by letter, as the history tells names apart; to `==` an accent may be written in two ways.
  private func isSame(_ one: String, _ other: String) -> Bool {
    one.utf8.elementsEqual(other.utf8)
  }
}
