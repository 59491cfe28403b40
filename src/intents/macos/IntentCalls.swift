import Foundation

/// What came of an intent; the program's own code has carried it out.
struct IntentReply: Sendable {
  /// The name of what went wrong; empty when nothing did.
  let error: String
  /// For the user, in the interface's language; an error has its own text.
  let message: String
  let texts: [String]
  let paused: Bool

  /// A copy of what belongs to the caller.
  fileprivate init(_ reply: NimbrelIntentReply) {
    error = text(reply.error)
    message = text(reply.message)
    paused = reply.paused
    guard let first = reply.texts else {
      texts = []
      return
    }
    texts = UnsafeBufferPointer(start: first, count: Int(reply.textCount)).map { text($0) }
  }
}

private func text(_ characters: UnsafePointer<CChar>?) -> String {
  characters.map { String(cString: $0) } ?? ""
}

/// Who waits for the answer, on its way through C.
private final class Waiting {
  let continuation: CheckedContinuation<IntentReply, Never>

  init(_ continuation: CheckedContinuation<IntentReply, Never>) {
    self.continuation = continuation
  }
}

private func answer(_ context: UnsafeMutableRawPointer?, _ reply: UnsafePointer<NimbrelIntentReply>?) {
  guard let context, let reply else { preconditionFailure("an answer without an asker, or without a reply") }
  let waiting = Unmanaged<Waiting>.fromOpaque(context).takeRetainedValue()
  waiting.continuation.resume(returning: IntentReply(reply.pointee))
}

/// Has an intent carried out, and throws what it says went wrong. The intent is one of the header's numbers, the
/// argument the text or the name that it is about.
@MainActor
func reply(to intent: some BinaryInteger, about argument: String = "") async throws -> IntentReply {
  let reply = await withCheckedContinuation { (continuation: CheckedContinuation<IntentReply, Never>) in
    let context = Unmanaged.passRetained(Waiting(continuation)).toOpaque()
    nimbrel_perform_intent(NimbrelIntent(intent), argument, context) { answer($0, $1) }
  }
  if reply.error.isEmpty { return reply }
  if reply.error == ArgumentTooLongError.name { throw ArgumentTooLongError() }
  throw BrevinIntentError(named: reply.error) ?? BrevinIntentError.unavailable
}
