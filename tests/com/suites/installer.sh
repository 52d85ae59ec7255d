# shellcheck shell=bash
# TRY
stage=$root$work/stage
cp "$tree"/build/pk/*-x64-setup.exe "$stage/setup.exe"
Windows 60 reg query HKCU >/dev/null
drive=$root$work/prefix/drive_c
Reg() { StopServer "$work/prefix"; cat "$root$work/prefix"/{system,user}.reg | sed -E '/^#time/d; s/^(\[.*\]) [0-9]+$/\1/' >"$stage/$1.reg"; (cd "$drive"; find . -printf '%p %s\n' | sort) >"$stage/$1.files"; }
Windows 60 cmd /c exit
Reg before
c=0; Windows 60 setup.exe /S 2>&1 || c=$?; echo "exit $c"
Reg installed
diff "$stage"/{before,installed}.reg || true
diff "$stage"/{before,installed}.files || true
Windows 60 cmd /c 'echo %PATH%'
Windows 60 cmd /c 'krnqb.exe --version' || true
c=0; Windows 60 'C:\Program Files\krnqb\uninstall.exe' /AllUsers /S 2>&1 || c=$?; echo "exit $c"
InSystem "$work/prefix" / "$wineServer" -w
Reg after
diff "$stage"/{before,after}.reg || true
diff "$stage"/{before,after}.files || true
