#!/usr/bin/env perl
# What a page shows is what happens: the files that it names and shows are written, and each command
# prints what stands behind it.
# usage: check_layouts.pl PAGE TOOL [--write]    --write: puts into the page what the commands print
use strict;
use warnings;
use Cwd;
use File::Spec;
use File::Temp;

my ($page, $tool, $write) = @ARGV;
$_ = File::Spec->rel2abs($_) for $page, $tool;
my $home = getcwd();
open my $in, '<', $page or die "$page: $!\n";
my $text = do { local $/; <$in> };
my $work = File::Temp->newdir;
chdir $work or die "$work: $!\n";
symlink $tool, 'campotipo' or die "campotipo: $!\n";
$ENV{PATH} = "$work:$ENV{PATH}";
$ENV{LC_ALL} = 'C.UTF-8';

my ($files, $commands, $faults) = (0, 0, 0);

sub printed {
  my ($command) = @_;
  open my $out, '-|', 'bash', '-c', "{ $command; } 2>&1" or die "bash: $!\n";
  my $all = do { local $/; <$out> } // '';
  close $out;
  return $all;
}

sub session {
  my ($block) = @_;
  my $made = '';
  for my $part (split /^(?=\$ )/m, $block) {
    my ($command, $told) = $part =~ /\A\$ (.*?)\n(.*)\z/s or die "no command: $part";
    my $is = printed($command);
    $commands++;
    $made .= "\$ $command\n$is";
    next if $write || $is eq $told;
    $faults++;
    print "FAULT: $page shows\n\$ $command\n$told    and this is printed\n$is\n";
  }
  return $made;
}

my $made = '';
for my $part (split /^(```\w*\n.*?^```\n)/ms, $text) {
  my ($language, $content) = $part =~ /\A```(\w*)\n(.*)```\n\z/s;
  if (!defined $language) { }
  elsif ($language eq 'console') { $part = "```console\n" . session($content) . "```\n" }
  elsif ($made =~ /^`([\w.]+)`:\n\n\z/m) {
    open my $out, '>', $1 or die "$1: $!\n";
    print $out $content;
    close $out or die "$1: $!\n";
    $files++;
  }
  $made .= $part;
}
if ($write) {
  open my $out, '>', $page or die "$page: $!\n";
  print $out $made;
}
print "$files files, $commands commands, $faults faults\n";
chdir $home or die "$home: $!\n";
exit($faults > 0 || $commands == 0);
