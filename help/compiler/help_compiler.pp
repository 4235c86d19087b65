{ Compiles the help project given as the first argument into the help file given as the
  second. It is the CHM writer of Free Pascal's chm package, driven directly, because the
  stand-alone compiler of Debian's Free Pascal writes the context map (the topic numbers
  that the program opens) with the project's absolute folder in front of every topic, which
  no help viewer finds. scripts/build-help-compiler.sh builds this program against a copy
  of the package's project reader that stores the topics by their names in the file. }
program help_compiler;

{$mode objfpc}{$H+}

uses
  cwstring, Classes, SysUtils, chmfilewriter;

var
  project: TChmProject;
  output: TFileStream;
begin
  if ParamCount <> 2 then
  begin
    WriteLn(StdErr, 'usage: help_compiler PROJECT.hhp OUTPUT.chm');
    Halt(2);
  end;
  project := TChmProject.Create;
  try
    project.LoadFromhhp(ParamStr(1), False);
    project.ScanHtmlContents := True;
    output := TFileStream.Create(ParamStr(2), fmCreate);
    try
      project.WriteChm(output);
    finally
      output.Free;
    end;
  finally
    project.Free;
  end;
end.
