#!/usr/bin/env perl
# Every C sample of a page, as a reader copies it, is a program: it compiles in an empty folder, runs,
# and prints what the comments beside its lines say. The pages that step a date keep its century.
# usage: compile_samples.pl SOURCE FOLDER LIBRARY_FOLDER PAGE...     pages in Markdown, HTML or roff
use strict;
use warnings;
use FindBin;

my ($root, $folder, $libraries, @pages) = @ARGV;
my @include = map { "-I$root/library/${_}include" } '', 'support/';
my @link = map { ("-L$_", "-Wl,-rpath,$_") } split /:/, $libraries;
my ($count, $faults, %stepped) = (0, 0);
sub slurp { open my $in, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$in> }
sub fault { print "FAULT: @_\n"; $faults++ }

for my $page (@pages) {
  my $text = $page =~ /\.3$/ ? `mandoc -T ascii -O width=200 $page` : slurp($page);
  for my $sample ($page =~ /\.md$/ ? fences($text) : $page =~ /\.html$/ ? fragments($text) : examples($text)) {
    $count++;
    my $printed = printed($page, $sample) // next;
    fault("$page: prints other than its comments say: $printed")
      if $sample =~ m{/\* prints } && $printed ne join '', map { "$_\n" } $sample =~ m{/\* prints (.*?) \*/}g;
    if ($sample =~ s/(DATAC_monta\(due), 31, 1, 2024/$1, 1, 2, 1975/) {
      $stepped{$page}++;
      my $again = printed($page, $sample);
      fault("$page: 01/02/1975 a month on is $again") unless $again =~ m{^01/03/1975};
    }
  }
}
fault("only @{[sort keys %stepped]} step a date") if keys %stepped < 3;
print "$count samples on ", scalar @pages, " pages, $faults faults\n";
exit($faults > 0);

sub fences { return $_[0] =~ /^```c\n(.*?)^```$/msg }

sub examples {    # of a manual page as it is shown, its backspaces taken out
  my $text = $_[0] =~ s/.\x08//gr;
  my @all;
  while ($text =~ /^( +)(#include <.*?^\1\})$/msg) {
    my ($indent, $sample) = ($1, $2 =~ s/^ +(?=#include)//r);
    $sample =~ s/^$indent//mg;
    push @all, "$1\n" if $sample =~ /((?:#include .*\n)+\nint main.*)/s;
  }
  return @all;
}

sub fragments {
  my @all;
  for my $fragment ($_[0] =~ m{<div class="fragment">(.*?)</div><!-- fragment -->}sg) {
    my $sample = join '', map { "$_\n" } $fragment =~ m{<div class="line">(.*?)</div>}sg;
    $sample =~ s/<[^>]*>//g;
    next if $sample =~ /^cc /;    # steps of the shell
    my %entities = (lt => '<', gt => '>', quot => '"', amp => '&', nbsp => ' ', '#39' => "'");
    push @all, $sample =~ s/&(#?\w+);/$entities{$1} \/\/ die "&$1;\n"/ger;
  }
  return @all;
}

sub printed {
  my ($page, $sample) = @_;
  open my $out, '>', "$folder/sample.c" or die "$folder/sample.c: $!\n";
  print $out $sample;
  close $out;
  my @compile = ('cc', '-std=c99', '-pedantic', '-Wall', '-Wextra', '-Werror', @include, "$folder/sample.c",
    '-o', "$folder/sample", @link, '-lcampotipo', '-lcampotipo-support');
  if (system(@compile) != 0) { fault("$page: does not compile:\n$sample"); return }
  my $printed = `$folder/sample`;
  fault("$page: ends with status $?:\n$sample") if $?;
  return $printed;
}
