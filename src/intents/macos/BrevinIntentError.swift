import AppIntents
import Foundation

/// Why an intent was not carried out. In this order, whose numbers other parts of the program rely on.
enum BrevinIntentError: Int, Error, CaseIterable, CustomLocalizedStringResourceConvertible {
  case unavailable = 0
  case emptyHistory = 1
  case emptyCollection = 2
  case authenticationFailed = 3
  case accessibilityRequired = 4

  /// By the name that programs know it by, the same in every language.
  init?(named name: String) {
    guard let error = Self.allCases.first(where: { $0.name == name }) else { return nil }
    self = error
  }

  private var name: String {
    switch self {
    case .unavailable: return "unavailable"
    case .emptyHistory: return "emptyHistory"
    case .emptyCollection: return "emptyCollection"
    case .authenticationFailed: return "authenticationFailed"
    case .accessibilityRequired: return "accessibilityRequired"
    }
  }

  var localizedStringResource: LocalizedStringResource {
    switch self {
    case .unavailable: return "Nimbrel no está disponible."
    case .emptyHistory: return "No hay texto seguro en el historial."
    case .emptyCollection: return "La colección no contiene texto seguro."
    case .authenticationFailed: return "No se pudo desbloquear Brevin."
    case .accessibilityRequired: return "Concede permiso de Accesibilidad para pegar automáticamente."
    }
  }
}

/// What an intent was given is longer than anything that anybody looks for.
struct ArgumentTooLongError: Error, CustomLocalizedStringResourceConvertible {
  static let name = "argumentTooLong"

  var localizedStringResource: LocalizedStringResource { "El texto es demasiado largo." }
}
