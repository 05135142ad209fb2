@echo off
rem Removes every key that register.cmd has written.
call "%~dp0register.cmd" /u
