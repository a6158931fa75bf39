#include "paramtool/GitCommit.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <algorithm>
#include <map>

#include "core/Text.h"

namespace loader::paramtool {

namespace {

constexpr int Patience = 10 * 60 * 1000; // milliseconds: a hook may run tests

struct GitResult {
  bool started = false;
  int exit = -1;
  QByteArray output;
  QByteArray errors;
  [[nodiscard]] bool Good() const { return started && exit == 0; }
};

QString PathText(const std::filesystem::path& path) {
  return QString::fromStdU16String(path.u16string());
}

GitResult Git(const std::filesystem::path& folder, const QStringList& arguments, const QByteArray& input = {},
              bool plainWords = false) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("GIT_TERMINAL_PROMPT"), QStringLiteral("0"));
  environment.insert(QStringLiteral("GIT_OPTIONAL_LOCKS"), QStringLiteral("0"));
  if (plainWords) { // its words are looked at
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
  }
  QProcess git;
  git.setProcessEnvironment(environment);
  // Names of files are no patterns.
  const QStringList head{QStringLiteral("--literal-pathspecs"), QStringLiteral("-C"), PathText(folder)};
  git.start(QStringLiteral("git"), head + arguments);
  GitResult result;
  result.started = git.waitForStarted();
  if (!result.started) {
    return result;
  }
  git.write(input);
  git.closeWriteChannel();
  if (git.waitForFinished(Patience)) {
    result.exit = git.exitStatus() == QProcess::NormalExit ? git.exitCode() : -1;
  } else {
    git.kill();
    git.waitForFinished();
  }
  result.output = git.readAllStandardOutput();
  result.errors = git.readAllStandardError();
  return result;
}

// One line of what git has said: the one that names the failure, else the first one.
QString Reason(const GitResult& result) {
  if (!result.started) {
    return {};
  }
  QString first;
  for (const QByteArray& bytes : {result.errors, result.output}) {
    for (const QString& line : QString::fromUtf8(bytes).split(QLatin1Char('\n'))) {
      const QString text = line.trimmed();
      if (text.startsWith(QLatin1String("fatal:")) || text.startsWith(QLatin1String("error:"))) {
        return text;
      }
      if (first.isEmpty()) {
        first = text;
      }
    }
  }
  return first.isEmpty() ? QStringLiteral("git: %1").arg(result.exit) : first;
}

GitResult Required(GitResult result) {
  if (!result.Good()) {
    throw GitFailure{Reason(result)};
  }
  return result;
}

bool LooksLikeWorkTree(std::filesystem::path folder) {
  std::error_code failed;
  folder = std::filesystem::absolute(folder, failed);
  for (;; folder = folder.parent_path()) {
    if (std::filesystem::exists(folder / ".git", failed)) {
      return true;
    }
    if (folder == folder.parent_path()) {
      return false;
    }
  }
}

// Relative to the root, as git names it.
QString NameInTree(const std::filesystem::path& workTree, const std::filesystem::path& file) {
  std::error_code failed;
  const std::filesystem::path folder = std::filesystem::canonical(file.parent_path(), failed);
  return QString::fromStdU16String(
      (folder / file.filename()).lexically_relative(workTree).generic_u16string());
}

std::optional<std::string> BytesInLastCommit(const std::filesystem::path& workTree, const QString& name) {
  // With the line ends that the work tree has.
  const GitResult blob = Git(
      workTree, {QStringLiteral("cat-file"), QStringLiteral("--filters"), QStringLiteral("HEAD:") + name});
  return blob.Good() ? std::optional(blob.output.toStdString()) : std::nullopt;
}

QStringList With(QStringList arguments, const QStringList& names) {
  return arguments << QStringLiteral("--") << names;
}

} // namespace

std::optional<std::filesystem::path> WorkTreeOf(const std::filesystem::path& folder) {
  const GitResult root =
      Git(folder, {QStringLiteral("rev-parse"), QStringLiteral("--show-toplevel")}, {}, true);
  if (root.Good()) {
    QString path = QString::fromUtf8(root.output);
    path.chop(1); // the line end
    return PathOf(path.toStdU16String());
  }
  const bool none = root.started ? root.errors.contains("not a git repository") : !LooksLikeWorkTree(folder);
  if (!none) {
    throw GitFailure{Reason(root)};
  }
  return std::nullopt;
}

std::optional<GitCommit> CommitFiles(const std::filesystem::path& workTree,
                                     const std::vector<std::filesystem::path>& files,
                                     const std::function<QString(const std::vector<GitChange>&)>& message) {
  QStringList names;
  for (const std::filesystem::path& file : files) {
    names << NameInTree(workTree, file);
  }
  Required(Git(workTree, With({QStringLiteral("add")}, names)));
  const GitResult changed = Required(
      Git(workTree, With({QStringLiteral("diff"), QStringLiteral("--cached"), QStringLiteral("--name-only"),
                          QStringLiteral("--no-renames"), QStringLiteral("-z")},
                         names)));
  const QStringList changedNames =
      QString::fromUtf8(changed.output).split(QLatin1Char('\0'), Qt::SkipEmptyParts);
  if (changedNames.isEmpty()) {
    return std::nullopt;
  }
  std::vector<GitChange> changes;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const QString& name = names.at(static_cast<qsizetype>(i));
    if (changedNames.contains(name)) {
      changes.push_back({files[i], BytesInLastCommit(workTree, name)});
    }
  }
  Required(
      Git(workTree,
          With({QStringLiteral("-c"), QStringLiteral("i18n.commitEncoding=UTF-8"), QStringLiteral("commit"),
                QStringLiteral("--quiet"), QStringLiteral("--cleanup=whitespace"), QStringLiteral("--file=-"),
                QStringLiteral("--only")},
               changedNames),
          message(changes).toUtf8()));
  const GitResult id = Required(
      Git(workTree, {QStringLiteral("rev-parse"), QStringLiteral("--short"), QStringLiteral("HEAD")}));
  const bool onBranch =
      Git(workTree, {QStringLiteral("symbolic-ref"), QStringLiteral("--quiet"), QStringLiteral("HEAD")})
          .Good();
  return GitCommit{id.output.trimmed().toStdString(), !onBranch};
}

} // namespace loader::paramtool
