#include "storage/ClipIndex.h"

#include <sqlite3.h>

#include "capture/model/Log.h"

namespace nimbrel {
namespace {

/// Each match costs the index as much as looking at several clips in memory.
constexpr qsizetype kMaxAnswer = 500;

void insertBody(SQLiteConnection& index, const IndexedClip& clip) {
  // While nobody waits: what painting a row needs to know of a long text.
  static_cast<void>(clip.traits());
  if (const auto& body = clip.body())
    index.run("INSERT INTO fts(id, body) VALUES(?, ?)", {sqlText(clipIdText(clip.clip.id)), SQLText{*body}});
}

/// The terms as FTS5 phrases side by side, which it reads as AND.
QByteArray matchExpression(const QList<QByteArray>& terms) {
  QByteArray expression;
  for (QByteArray term : terms) {
    if (!expression.isEmpty()) expression += ' ';
    expression += '"' + term.replace('"', "\"\"") + '"';
  }
  return expression;
}

}  // namespace

void deleteById(SQLiteConnection& connection, const char* sql, const QList<QUuid>& ids) {
  SQLTransaction transaction(connection);
  for (const QUuid& id : ids)
    connection.run(sql, {sqlText(clipIdText(id))});
  transaction.commit();
}

ClipIndex::ClipIndex() : queue_(QStringLiteral("Nimbrel.db.index"), SerialQueue::Priority::userInitiated) {
  queue_.runAndWait([this] { open(); });
}

ClipIndex::~ClipIndex() = default;

void ClipIndex::open() {
  try {
    auto index = std::make_unique<SQLiteConnection>(":memory:");
    index->execute("CREATE VIRTUAL TABLE fts USING fts5(id UNINDEXED, body, tokenize = 'trigram')");
    index_ = std::move(index);
  } catch (const SQLError& error) {
    logFailure("No se pudo crear el índice de búsqueda (se buscará sin índice)", error.description());
  }
}

void ClipIndex::put(const ClipRef& clip) {
  queue_.post([this, clip] {
    if (!index_) return;
    try {
      SQLTransaction transaction(*index_);
      index_->run("DELETE FROM fts WHERE id = ?", {sqlText(clipIdText(clip->clip.id))});
      insertBody(*index_, *clip);
      transaction.commit();
    } catch (const SQLError& error) {
      logFailure("No se pudo indexar", error.description());
    }
  });
}

void ClipIndex::remove(const QList<QUuid>& ids) {
  queue_.post([this, ids] {
    if (!index_) return;
    try {
      deleteById(*index_, "DELETE FROM fts WHERE id = ?", ids);
    } catch (const SQLError& error) {
      logFailure("No se pudo actualizar el índice", error.description());
    }
  });
}

void ClipIndex::rebuild(const QList<ClipRef>& clips) {
  ++pendingRebuilds_;
  queue_.post([this, clips] {
    if (index_) {
      try {
        SQLTransaction transaction(*index_);
        index_->execute("DELETE FROM fts");
        for (const ClipRef& clip : clips)
          insertBody(*index_, *clip);
        transaction.commit();
      } catch (const SQLError& error) {
        logFailure("No se pudo reconstruir el índice", error.description());
      }
    }
    --pendingRebuilds_;
  });
}

std::optional<QSet<QUuid>> ClipIndex::search(const QList<QByteArray>& terms) {
  if (terms.isEmpty() || pendingRebuilds_ > 0) return std::nullopt;
  return queue_.runAndWait([&]() -> std::optional<QSet<QUuid>> {
    if (!index_) return std::nullopt;
    try {
      QSet<QUuid> ids;
      index_->run("SELECT id FROM fts WHERE fts MATCH ?", {SQLText{matchExpression(terms)}},
                  [&](sqlite3_stmt* row) {
                    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
                    if (const auto id = clipIdFromText(QString::fromLatin1(text))) ids.insert(*id);
                    if (ids.size() > kMaxAnswer) sqlite3_interrupt(sqlite3_db_handle(row));
                  });
      return ids;
    } catch (const SQLError& error) {
      if (error.code == SQLITE_INTERRUPT) return std::nullopt;
      logFailure("Búsqueda fallida", error.description());
      return std::nullopt;
    }
  });
}

void ClipIndex::flush() {
  queue_.runAndWait([] {});
}

}  // namespace nimbrel
