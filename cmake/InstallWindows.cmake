# What the Windows packages hold: scripts/windows.sh.
