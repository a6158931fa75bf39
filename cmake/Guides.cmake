# What there is to read in every package, and the units that docs/paramtool.md shows.
set(LOADER_GUIDES README.md README.ja.md CHANGELOG.md CONTRIBUTING.md docs/user-guide.md docs/user-guide.ja.md
                  docs/paramtool.md docs/paramtool.ja.md docs/simulator.md docs/file-formats.md docs/parameters.md
                  docs/register-map.md docs/ports.md docs/licences.md docs/architecture.md docs/performance.md
                  docs/reliability.md docs/windows.md
                  share/systemd/paramtool-backup.service share/systemd/paramtool-backup.timer)
