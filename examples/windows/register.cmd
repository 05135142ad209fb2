@echo off
rem Registers the DLLs that lie in x64 and x86 beside this file, both on 64-bit Windows:
rem   register.cmd        for everybody on this machine, or for the user alone without its rights
rem   register.cmd /u     removes them
setlocal
set failed=0
set native=%SystemRoot%\System32
if defined PROCESSOR_ARCHITEW6432 set native=%SystemRoot%\Sysnative
if not exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto one
call :all "%native%\regsvr32.exe" x64 %1
call :all "%SystemRoot%\SysWOW64\regsvr32.exe" x86 %1
exit /b %failed%

:one
set folder=x86
if "%PROCESSOR_ARCHITECTURE%"=="AMD64" set folder=x64
call :all "%native%\regsvr32.exe" %folder% %1
exit /b %failed%

:all
call :each %1 "%~dp0%2\QuorDataLib.dll" %3
call :each %1 "%~dp0%2\QuorAccQueries.dll" %3
exit /b

:each
%1 /s %3 %2
if not errorlevel 1 exit /b
echo %~2: regsvr32 %3 has ended with an error
set failed=1
exit /b
