#include "storage/ClipIndex.h"

#include <sqlite3.h>

#include "capture/model/Log.h"

namespace nimbrel {
namespace {

/// Each match costs the index as much as looking at several clips in memory.
constexpr qsizetype kMaxAnswer = 500;

constexpr const char* kCreate =
    "CREATE VIRTUAL TABLE fts USING fts5(id UNINDEXED, body, tokenize = 'trigram')";
constexpr const char* kInsert = "INSERT INTO fts(rowid, id, body) VALUES(?, ?, ?)";

/// So many rows are deleted one by one before anybody could notice.
constexpr qsizetype kFew = 200;

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

ClipIndex::ClipIndex() : queue_(QStringLiteral("Nimbrel.db.index"), SerialQueue::Priority::userInitiated) {
  queue_.runAndWait([this] { open(); });
}

ClipIndex::~ClipIndex() = default;

void ClipIndex::open() {
  try {
    auto index = std::make_unique<SQLiteConnection>(":memory:");
    index->execute(kCreate);
    index_ = std::move(index);
  } catch (const SQLError& error) {
    logFailure("No se pudo crear el índice de búsqueda (se buscará sin índice)", error.description());
  }
}

void ClipIndex::erase(const QUuid& id) {
  if (const auto row = rows_.constFind(id); row != rows_.constEnd())
    index_->run("DELETE FROM fts WHERE rowid = ?", {*row});
}

void ClipIndex::insert(const IndexedClip& clip) {
  // While nobody waits: what painting a row needs to know of a long text.
  static_cast<void>(clip.traits());
  const auto& body = clip.body();
  if (!body) return;
  index_->run(kInsert, {++lastRow_, sqlText(clipIdText(clip.clip.id)), SQLText{*body}});
}

void ClipIndex::put(const ClipRef& clip) {
  queue_.post([this, clip] {
    if (!index_) return;
    try {
      SQLTransaction transaction(*index_);
      erase(clip->clip.id);
      insert(*clip);
      transaction.commit();
      if (clip->body())
        rows_.insert(clip->clip.id, lastRow_);
      else
        rows_.remove(clip->clip.id);
    } catch (const SQLError& error) {
      logFailure("No se pudo indexar", error.description());
    }
  });
}

void ClipIndex::remove(const QList<QUuid>& ids) {
  const bool many = ids.size() > kFew;
  if (many) ++pendingRebuilds_;
  queue_.post([this, ids, many] {
    if (index_) {
      try {
        if (many && ids.size() * 2 > rows_.size())
          removeMost(QSet<QUuid>(ids.begin(), ids.end()));
        else
          removeFew(ids);
      } catch (const SQLError& error) {
        logFailure("No se pudo actualizar el índice", error.description());
      }
    }
    if (many) --pendingRebuilds_;
  });
}

void ClipIndex::removeFew(const QList<QUuid>& ids) {
  SQLTransaction transaction(*index_);
  for (const QUuid& id : ids)
    erase(id);
  transaction.commit();
  for (const QUuid& id : ids)
    rows_.remove(id);
}

void ClipIndex::removeMost(const QSet<QUuid>& ids) {
  // Copying what stays is less work than undoing what goes, word by word.
  QHash<QUuid, RowId> staying;
  SQLTransaction transaction(*index_);
  index_->execute("ALTER TABLE fts RENAME TO outgoing");
  index_->execute(kCreate);
  for (auto it = rows_.constBegin(); it != rows_.constEnd(); ++it) {
    if (ids.contains(it.key())) continue;
    index_->run("INSERT INTO fts(rowid, id, body) SELECT rowid, id, body FROM outgoing WHERE rowid = ?",
                {it.value()});
    staying.insert(it.key(), it.value());
  }
  index_->execute("DROP TABLE outgoing");
  transaction.commit();
  rows_ = staying;
}

void ClipIndex::rebuild(const QList<ClipRef>& clips) {
  ++pendingRebuilds_;
  queue_.post([this, clips] {
    if (index_) {
      try {
        QHash<QUuid, RowId> rows;
        SQLTransaction transaction(*index_);
        index_->execute("DELETE FROM fts");
        for (const ClipRef& clip : clips) {
          insert(*clip);
          if (clip->body()) rows.insert(clip->clip.id, lastRow_);
        }
        transaction.commit();
        rows_ = rows;
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
